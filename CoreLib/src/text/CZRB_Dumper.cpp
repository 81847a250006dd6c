#include "CZRB_Dumper.h"

#include "CZRB_String.h"

#include <iostream>

namespace {
const unsigned int kDefaultLevel = 2;
}

CZRB_Dumper::CZRB_Dumper() : m_Level(kDefaultLevel), m_Written(0) {}

CZRB_Dumper::CZRB_Dumper(int level)
    : m_Level(level < 0 || level > 2 ? kDefaultLevel : static_cast<unsigned int>(level)),
      m_Written(0) {}

CZRB_Dumper::CZRB_Dumper(const CZRB_Dumper& other) : m_Level(kDefaultLevel), m_Written(0) {
    DataCopy(other);
}

CZRB_Dumper& CZRB_Dumper::operator=(const CZRB_Dumper& other) {
    DataCopy(other);
    return *this;
}

CZRB_Dumper::~CZRB_Dumper() {
    if (m_Written != 0) {
        std::cout << std::endl;
    }
}

void CZRB_Dumper::DataCopy(const CZRB_Dumper& other) {
    m_Level = other.m_Level;
    m_Written = other.m_Written;
}

CZRB_Dumper& CZRB_Dumper::operator<<(double value) {
    std::cout << value;
    m_Written = 1;
    return *this;
}

CZRB_Dumper& CZRB_Dumper::operator<<(const char* text) {
    if (text != nullptr) {
        std::cout << text;
    }
    m_Written = 1;
    return *this;
}

CZRB_Dumper& CZRB_Dumper::operator<<(unsigned __int64 value) {
    std::cout << value;
    m_Written = 1;
    return *this;
}

CZRB_Dumper& CZRB_Dumper::operator<<(__int64 value) {
    std::cout << value;
    m_Written = 1;
    return *this;
}

CZRB_Dumper& CZRB_Dumper::operator<<(unsigned int value) {
    std::cout << value;
    m_Written = 1;
    return *this;
}

CZRB_Dumper& CZRB_Dumper::operator<<(int value) {
    std::cout << value;
    m_Written = 1;
    return *this;
}

CZRB_Dumper& CZRB_Dumper::operator<<(const CZRB_String& text) {
    std::cout << text.GetStringC();
    m_Written = 1;
    return *this;
}
