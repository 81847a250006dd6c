// The library's instantiations of CZRB_OrderedList for its arithmetic element types.
// The extern declarations in the header carry LZRB_API, which exports these definitions;
// repeating the attribute here would be ignored (GCC warns about it).
#include "CZRB_OrderedList.h"

template class CZRB_OrderedList<signed char>;
template class CZRB_OrderedList<unsigned char>;
template class CZRB_OrderedList<short>;
template class CZRB_OrderedList<unsigned short>;
template class CZRB_OrderedList<int>;
template class CZRB_OrderedList<unsigned int>;
template class CZRB_OrderedList<__int64>;
template class CZRB_OrderedList<unsigned __int64>;
template class CZRB_OrderedList<float>;
template class CZRB_OrderedList<double>;
