// Symbol export for the LZRB_Core shared library.
//
// The library is built with hidden visibility; only what carries LZRB_API is part of its
// binary interface. Classes are marked as a whole so that their type information and
// virtual tables are exported too (catching CZRB_Exception and dynamic_cast across the
// library boundary depend on it).
#ifndef LZRB_EXPORT_H
#define LZRB_EXPORT_H

#define LZRB_API __attribute__((visibility("default")))

#endif
