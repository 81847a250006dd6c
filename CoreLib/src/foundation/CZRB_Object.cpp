#include "CZRB_Object.h"

// Defined here so that the virtual table and type information live in the library.
CZRB_Object::~CZRB_Object() = default;
