#include "CZRB_Exception.h"

CZRB_Exception::CZRB_Exception() : code(0), object(nullptr), detail(0) {}

CZRB_Exception::CZRB_Exception(unsigned int code_, const void* object_, unsigned __int64 detail_)
    : code(code_), object(object_), detail(detail_) {}

CZRB_Exception::CZRB_Exception(const CZRB_Exception& other) = default;

CZRB_Exception& CZRB_Exception::operator=(const CZRB_Exception& other) = default;

CZRB_Exception::~CZRB_Exception() = default;
