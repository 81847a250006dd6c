#include "CZRB_Time.h"

#include "values/DirectiveText.h"

#include <chrono>
#include <climits>
#include <cstdio>
#include <ctime>

namespace {

const int kNullTime = -1;
const int kMillisecondsPerDay = 86400000;

// Two's complement sum and product of 32-bit values, computed without signed overflow.
int WrapAdd(int a, int b) {
    const unsigned int u = static_cast<unsigned int>(a) + static_cast<unsigned int>(b);
    return u <= static_cast<unsigned int>(INT_MAX) ? static_cast<int>(u)
                                                   : -static_cast<int>(~u) - 1;
}

int WrapMul(int a, int b) {
    const unsigned int u = static_cast<unsigned int>(a) * static_cast<unsigned int>(b);
    return u <= static_cast<unsigned int>(INT_MAX) ? static_cast<int>(u)
                                                   : -static_cast<int>(~u) - 1;
}

} // namespace

CZRB_Time::CZRB_Time() : m_milliseconds(kNullTime) {}

CZRB_Time::CZRB_Time(int hour, int minute, int second, int millisecond)
    : m_milliseconds(kNullTime) {
    Set(hour, minute, second, millisecond);
}

CZRB_Time::CZRB_Time(const CZRB_Time& other) : CZRB_Object(other), m_milliseconds(kNullTime) {
    DataCopy(other);
}

CZRB_Time& CZRB_Time::operator=(const CZRB_Time& other) {
    DataCopy(other);
    return *this;
}

CZRB_Time::~CZRB_Time() = default;

void CZRB_Time::DataCopy(const CZRB_Time& other) {
    m_milliseconds = other.m_milliseconds;
}

bool CZRB_Time::IsValid(int hour, int minute, int second, int millisecond) {
    return static_cast<unsigned int>(hour) < 24 && static_cast<unsigned int>(minute) < 60 &&
           static_cast<unsigned int>(second) < 60 && static_cast<unsigned int>(millisecond) < 1000;
}

unsigned int CZRB_Time::Set(int hour, int minute, int second, int millisecond) {
    if (!IsValid(hour, minute, second, millisecond)) {
        m_milliseconds = kNullTime;
        return 0;
    }
    m_milliseconds = ((hour * 60 + minute) * 60 + second) * 1000 + millisecond;
    return 1;
}

unsigned int CZRB_Time::Set(t_Date_Struct& time) {
    return Set(time.hour, time.minute, time.second, time.millisecond);
}

unsigned char CZRB_Time::IsValid() const {
    return static_cast<unsigned int>(m_milliseconds) < 86400000U ? 1 : 0;
}

unsigned char CZRB_Time::IsNull() const {
    return IsValid() ? 0 : 1;
}

int CZRB_Time::GetHour() const {
    return IsValid() ? m_milliseconds / 3600000 : -1;
}

int CZRB_Time::GetMinute() const {
    return IsValid() ? m_milliseconds % 3600000 / 60000 : -1;
}

int CZRB_Time::GetSecond() const {
    return IsValid() ? m_milliseconds / 1000 % 60 : -1;
}

int CZRB_Time::GetMillisecond() const {
    return IsValid() ? m_milliseconds % 1000 : -1;
}

unsigned int CZRB_Time::GetTimeStruct(t_Date_Struct& time) const {
    if (!IsValid())
        return 32;
    time.hour = static_cast<unsigned char>(GetHour());
    time.minute = static_cast<unsigned char>(GetMinute());
    time.second = static_cast<unsigned char>(GetSecond());
    time.millisecond = static_cast<unsigned short>(GetMillisecond());
    return 0;
}

// The 32-bit sums and the truncating division and remainder are those of the shipped code;
// for amounts that do not come near the 32-bit limits they give the wrapped time of day.
CZRB_Time CZRB_Time::AddMilliseconds(int n) const {
    CZRB_Time result;
    if (!IsValid())
        return result;
    if (n >= 0) {
        result.m_milliseconds = WrapAdd(m_milliseconds, n) % kMillisecondsPerDay;
    } else {
        const int days = WrapAdd(kMillisecondsPerDay, WrapMul(n, -1)) / kMillisecondsPerDay;
        const int shift = WrapAdd(n, WrapMul(days, kMillisecondsPerDay));
        result.m_milliseconds = WrapAdd(shift, m_milliseconds) % kMillisecondsPerDay;
    }
    return result;
}

CZRB_Time CZRB_Time::AddSeconds(int n) const {
    const int rest = n - n / 86400 * 86400;
    return AddMilliseconds(rest * 1000);
}

int CZRB_Time::MillisecondsTo(CZRB_Time other) const {
    if (!IsValid() || !other.IsValid())
        return 0;
    return other.m_milliseconds - m_milliseconds;
}

int CZRB_Time::SecondsTo(CZRB_Time other) const {
    return MillisecondsTo(other) / 1000;
}

CZRB_Time& CZRB_Time::FromCurrentTime() {
    DataCopy(GetCurrentTime());
    return *this;
}

CZRB_Time CZRB_Time::GetCurrentTime() {
    const long long sinceEpoch = std::chrono::duration_cast<std::chrono::milliseconds>(
                                     std::chrono::system_clock::now().time_since_epoch())
                                     .count();
    const long long milliseconds = (sinceEpoch % 1000 + 1000) % 1000;
    const std::time_t seconds = static_cast<std::time_t>((sinceEpoch - milliseconds) / 1000);
    std::tm local = {};
    if (localtime_r(&seconds, &local) == nullptr)
        return CZRB_Time();
    return CZRB_Time(local.tm_hour, local.tm_min, local.tm_sec, static_cast<int>(milliseconds));
}

unsigned char CZRB_Time::operator==(const CZRB_Time& other) const {
    return m_milliseconds == other.m_milliseconds ? 1 : 0;
}

unsigned char CZRB_Time::operator!=(const CZRB_Time& other) const {
    return m_milliseconds != other.m_milliseconds ? 1 : 0;
}

unsigned char CZRB_Time::operator<(const CZRB_Time& other) const {
    return m_milliseconds < other.m_milliseconds ? 1 : 0;
}

unsigned char CZRB_Time::operator<=(const CZRB_Time& other) const {
    return m_milliseconds <= other.m_milliseconds ? 1 : 0;
}

unsigned char CZRB_Time::operator>(const CZRB_Time& other) const {
    return m_milliseconds > other.m_milliseconds ? 1 : 0;
}

unsigned char CZRB_Time::operator>=(const CZRB_Time& other) const {
    return m_milliseconds >= other.m_milliseconds ? 1 : 0;
}

signed char CZRB_Time::SortCompare(const CZRB_Time& a, const CZRB_Time& b) {
    if (a.m_milliseconds == b.m_milliseconds)
        return 0;
    return a.m_milliseconds > b.m_milliseconds ? 1 : -1;
}

CZRB_String CZRB_Time::ToString(const CZRB_String& format) const {
    t_Date_Struct time = {0, 0, 0, 0};
    GetTimeStruct(time);
    return ZRB_Detail::ExpandDirectives(format, [&time](char directive, char* field) {
        const bool padded = directive >= 'A' && directive <= 'Z';
        int value = 0;
        int width = padded ? 2 : 0;
        switch (directive | 0x20) { // the lower-case letter
        case 'h':
            value = time.hour;
            break;
        case 't':
            value = time.minute;
            break;
        case 's':
            value = time.second;
            break;
        case 'x':
            value = time.millisecond;
            width = padded ? 3 : 0;
            break;
        default:
            return false;
        }
        std::snprintf(field, ZRB_Detail::DIRECTIVE_FIELD_SIZE, "%0*d", width, value);
        return true;
    });
}

CZRB_Buffer& operator<<(CZRB_Buffer& buffer, CZRB_Time& time) {
    return buffer << time.m_milliseconds;
}

CZRB_Buffer& operator>>(CZRB_Buffer& buffer, CZRB_Time& time) {
    int milliseconds = 0;
    buffer >> milliseconds;
    time.m_milliseconds = milliseconds;
    return buffer;
}

// --- Named containers ---

template class CZRB_Vector<CZRB_Time>;
template class CZRB_List<CZRB_Time>;

CZRB_TimeVector::~CZRB_TimeVector() = default;
CZRB_TimeList::~CZRB_TimeList() = default;
