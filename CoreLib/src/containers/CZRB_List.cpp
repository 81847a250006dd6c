// The library's instantiations of CZRB_List for its arithmetic element types.
// The extern declarations in the header carry LZRB_API, which exports these definitions;
// repeating the attribute here would be ignored (GCC warns about it).
#include "CZRB_List.h"

template class CZRB_List<signed char>;
template class CZRB_List<unsigned char>;
template class CZRB_List<short>;
template class CZRB_List<unsigned short>;
template class CZRB_List<int>;
template class CZRB_List<unsigned int>;
template class CZRB_List<__int64>;
template class CZRB_List<unsigned __int64>;
template class CZRB_List<float>;
template class CZRB_List<double>;
