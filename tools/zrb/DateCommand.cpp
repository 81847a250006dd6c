// zrb date: a date converted between the five calendars of CZRB_Date.
#include "Common.h"

#include "CZRB_Date.h"

#include <CLI/CLI.hpp>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace zrb {
namespace {

const char kCommand[] = "date";

// Gregorian 2000-01-01 and its day number: the reference that turns dates into day numbers
// and back, as CZRB_Date shows its day number only as a distance.
const long long kReferenceDay = 2451545;
const long long kFirstDay = -784350574879LL;
const long long kLastDay = 784354017364LL;

struct Calendar {
    const char* name;
    CZRB_Date::t_Calendar id;
};

const Calendar kCalendars[] = {{"gregorian", CZRB_Date::CALENDAR_GREGORIAN},
                               {"julian", CZRB_Date::CALENDAR_JULIAN},
                               {"revised-julian", CZRB_Date::CALENDAR_REVISED_JULIAN},
                               {"persian", CZRB_Date::CALENDAR_PERSIAN},
                               {"islamic", CZRB_Date::CALENDAR_ISLAMIC}};

const char* const kWeekdays[] = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                 "Friday", "Saturday", "Sunday"};

struct DateOptions {
    std::string from = "gregorian";
    std::vector<std::string> to;
    std::string format = "%Y-%M-%D";
    std::string date;
    long long dayNumber = 0;
    bool haveDayNumber = false;
};

CZRB_Date::t_Calendar CalendarNamed(const std::string& name) {
    for (const Calendar& calendar : kCalendars) {
        if (name == calendar.name) {
            return calendar.id;
        }
    }
    throw ToolError("unknown calendar \"" + name + "\"");
}

CZRB_Date Reference() {
    return CZRB_Date(2000, 1, 1, CZRB_Date::CALENDAR_GREGORIAN);
}

long long DayNumberOf(const CZRB_Date& date) {
    return kReferenceDay + Reference().GetDaysTo(date);
}

// One signed decimal field of "Y-M-D" into `value`; `text` is left after it and its separator.
// False when the text does not start with such a field.
bool TakeField(std::string& text, bool last, long long& value) {
    const std::size_t end = last ? text.size() : text.find('-', text.rfind('-', 0) == 0 ? 1 : 0);
    const std::string digits = text.substr(0, end);
    const bool negative = digits.rfind('-', 0) == 0;
    const std::string magnitude = negative ? digits.substr(1) : digits;
    if (end == std::string::npos || magnitude.empty() ||
        magnitude.find_first_not_of("0123456789") != std::string::npos) {
        return false;
    }
    value = magnitude.size() > 10 ? LLONG_MAX : std::atoll(magnitude.c_str());
    value = negative ? -value : value;
    text.erase(0, last ? text.size() : end + 1);
    return true;
}

// The date "Y-M-D" in `calendar`, or an error that says why it is not one.
CZRB_Date ParseDate(const std::string& text, CZRB_Date::t_Calendar calendar,
                    const std::string& name) {
    std::string rest = text;
    long long fields[3] = {};
    if (!TakeField(rest, false, fields[0]) || !TakeField(rest, false, fields[1]) ||
        !TakeField(rest, true, fields[2])) {
        throw ToolError("\"" + text + "\" is not a date Y-M-D (such as 2024-03-20 or -44-03-15)");
    }
    for (const long long field : fields) {
        if (field < INT_MIN + 1LL || field > INT_MAX) {
            throw ToolError("\"" + text + "\": year, month and day must fit 32 bits");
        }
    }
    const int year = static_cast<int>(fields[0]);
    const int month = static_cast<int>(fields[1]);
    const int day = static_cast<int>(fields[2]);
    if (year == 0) {
        throw ToolError("there is no year 0: year -1 is followed by year 1");
    }
    if (month < 1 || month > 12) {
        throw ToolError("month " + std::to_string(month) + " is not between 1 and 12");
    }
    const int days = CZRB_Date::GetDaysPerMonth(month, year, calendar);
    if (day < 1 || day > days) {
        throw ToolError("day " + std::to_string(day) + " does not exist: month " +
                        std::to_string(month) + " of " + std::to_string(year) + " has " +
                        std::to_string(days) + " days in the " + name + " calendar");
    }
    CZRB_Date date;
    if (date.Set(year, month, day, calendar) == 0) {
        throw ToolError(text + " lies outside the range of dates the library holds");
    }
    CZRB_Date::t_Date_Struct back{};
    date.GetDateStruct(back, calendar);
    if (back.year != year || back.month != month || back.day != day) {
        PrintError(kCommand, "note: the " + name + " day-number formula wraps for year " +
                                 std::to_string(year) + "; day " +
                                 std::to_string(DayNumberOf(date)) + " reads back as " +
                                 date.ToString("%Y-%M-%D", calendar).GetStringC());
    }
    return date;
}

CZRB_Date DateFromDayNumber(long long dayNumber) {
    if (dayNumber < kFirstDay || dayNumber > kLastDay) {
        throw ToolError("day number " + std::to_string(dayNumber) + " is outside " +
                        std::to_string(kFirstDay) + " .. " + std::to_string(kLastDay));
    }
    return Reference().AddDays(dayNumber - kReferenceDay);
}

bool Representable(const CZRB_Date& date, CZRB_Date::t_Calendar calendar) {
    CZRB_Date::t_Date_Struct parts{};
    return date.GetDateStruct(parts, calendar) != 0;
}

void PrintTable(const CZRB_Date& date, const std::vector<std::string>& calendars,
                const std::string& format) {
    std::printf("%-15s %-16s %-10s %11s %14s\n", "calendar", "date", "weekday", "day of year",
                "day number");
    for (const std::string& name : calendars) {
        const CZRB_Date::t_Calendar calendar = CalendarNamed(name);
        if (!Representable(date, calendar)) {
            std::printf("%-15s %-16s\n", name.c_str(), "(year beyond 32 bits)");
            continue;
        }
        std::printf("%-15s %-16s %-10s %11d %14lld\n", name.c_str(),
                    date.ToString(format.c_str(), calendar).GetStringC(),
                    kWeekdays[date.GetWeekday(calendar) - 1], date.GetDayOfyear(calendar),
                    DayNumberOf(date));
    }
}

int RunDate(const DateOptions& options) {
    const CZRB_Date::t_Calendar from = CalendarNamed(options.from);
    CZRB_Date date;
    if (options.haveDayNumber) {
        date = DateFromDayNumber(options.dayNumber);
    } else if (options.date.empty() || options.date == "today") {
        date = CZRB_Date::GetCurrentDate();
        if (date.IsNull()) {
            throw ToolError("the system clock gives no valid date");
        }
    } else {
        date = ParseDate(options.date, from, options.from);
    }
    std::vector<std::string> targets;
    for (const std::string& name : options.to) {
        if (name != "all") {
            targets.push_back(name);
            continue;
        }
        for (const Calendar& calendar : kCalendars) {
            targets.push_back(calendar.name);
        }
    }
    if (options.to.size() == 1 && targets.size() == 1) {
        const CZRB_Date::t_Calendar to = CalendarNamed(targets[0]);
        if (!Representable(date, to)) {
            throw ToolError("this date's " + targets[0] + " year does not fit 32 bits");
        }
        std::printf("%s\n", date.ToString(options.format.c_str(), to).GetStringC());
        return kExitOk;
    }
    PrintTable(date, targets, options.format);
    return kExitOk;
}

} // namespace

void AddDateCommand(CLI::App& app, CommandRun& run) {
    auto options = std::make_shared<DateOptions>();
    CLI::App* command = app.add_subcommand(
        "date", "Convert a date between the gregorian, julian, revised-julian, persian and "
                "islamic calendars.");
    std::vector<std::string> names;
    for (const Calendar& calendar : kCalendars) {
        names.push_back(calendar.name);
    }
    command->add_option("--from", options->from, "Calendar of DATE (default gregorian)")
        ->type_name("CAL")
        ->transform(CLI::IsMember(names, CLI::ignore_case));
    names.push_back("all");
    command
        ->add_option("--to", options->to,
                     "Calendar(s) to show, comma-separated, or all (the default): one calendar "
                     "prints the date alone, several a table")
        ->type_name("CAL[,CAL...]")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->transform(CLI::IsMember(names, CLI::ignore_case));
    command
        ->add_option("--format", options->format,
                     "Date format: %d %D day, %m %M month, %y %Y year, %% a percent sign; "
                     "upper case pads (default %Y-%M-%D)")
        ->type_name("FMT");
    CLI::Option* dayNumber =
        command->add_option("--jd", options->dayNumber, "The date of Julian day number N")
            ->type_name("N");
    command
        ->add_option("DATE", options->date,
                     "Y-M-D in the --from calendar (negative years before year 1; no year 0), "
                     "or today (the default)")
        ->excludes(dayNumber);
    command->callback([options, dayNumber, &run] {
        options->haveDayNumber = dayNumber->count() > 0;
        if (options->to.empty()) {
            options->to.push_back("all");
        }
        run = [options] { return RunDate(*options); };
    });
}

} // namespace zrb
