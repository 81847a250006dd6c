// Conversions between calendar dates and day numbers, per calendar.
#include "CZRB_Date.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace {

const char* const kNames[] = {"Gregorian", "Julian", "RevisedJulian", "Persian", "Islamic"};

// Dates spread over years 1..4000 of the calendar, so that every branch is taken.
std::vector<CZRB_Date::t_Date_Struct> SampleDates(CZRB_Date::t_Calendar calendar) {
    std::vector<CZRB_Date::t_Date_Struct> dates;
    for (int i = 0; i < 4096; ++i) {
        const int year = 1 + i * 977 % 4000;
        const int month = 1 + i * 7 % 12;
        const int day = 1 + i * 13 % CZRB_Date::GetDaysPerMonth(month, year, calendar);
        dates.push_back({day, month, year});
    }
    return dates;
}

void DateToDayNumber(benchmark::State& state) {
    const auto calendar = static_cast<CZRB_Date::t_Calendar>(state.range(0));
    const std::vector<CZRB_Date::t_Date_Struct> dates = SampleDates(calendar);
    CZRB_Date date;
    size_t i = 0;
    for (auto _ : state) {
        const CZRB_Date::t_Date_Struct& d = dates[i++ & 4095];
        benchmark::DoNotOptimize(date.Set(d.year, d.month, d.day, calendar));
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
    state.SetLabel(kNames[state.range(0)]);
}

void DayNumberToDate(benchmark::State& state) {
    const auto calendar = static_cast<CZRB_Date::t_Calendar>(state.range(0));
    std::vector<CZRB_Date> days;
    for (const CZRB_Date::t_Date_Struct& d : SampleDates(calendar))
        days.emplace_back(d.year, d.month, d.day, calendar);
    CZRB_Date::t_Date_Struct out;
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(days[i++ & 4095].GetDateStruct(out, calendar));
        benchmark::DoNotOptimize(out);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
    state.SetLabel(kNames[state.range(0)]);
}

} // namespace

BENCHMARK(DateToDayNumber)->DenseRange(0, 4);
BENCHMARK(DayNumberToDate)->DenseRange(0, 4);
