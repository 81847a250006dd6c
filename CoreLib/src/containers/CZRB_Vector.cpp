// The library's instantiations of CZRB_Vector for its arithmetic element types.
// The extern declarations in the header carry LZRB_API, which exports these definitions;
// repeating the attribute here would be ignored (GCC warns about it).
#include "CZRB_Vector.h"

template class CZRB_Vector<signed char>;
template class CZRB_Vector<unsigned char>;
template class CZRB_Vector<short>;
template class CZRB_Vector<unsigned short>;
template class CZRB_Vector<int>;
template class CZRB_Vector<unsigned int>;
template class CZRB_Vector<__int64>;
template class CZRB_Vector<unsigned __int64>;
template class CZRB_Vector<float>;
template class CZRB_Vector<double>;
