// The library's instantiations of CZRB_OrderedVector for its arithmetic element types.
// The extern declarations in the header carry LZRB_API, which exports these definitions;
// repeating the attribute here would be ignored (GCC warns about it).
#include "CZRB_OrderedVector.h"

template class CZRB_OrderedVector<signed char>;
template class CZRB_OrderedVector<unsigned char>;
template class CZRB_OrderedVector<short>;
template class CZRB_OrderedVector<unsigned short>;
template class CZRB_OrderedVector<int>;
template class CZRB_OrderedVector<unsigned int>;
template class CZRB_OrderedVector<__int64>;
template class CZRB_OrderedVector<unsigned __int64>;
template class CZRB_OrderedVector<float>;
template class CZRB_OrderedVector<double>;
