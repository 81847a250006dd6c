#include "CZRB_Size.h"

template class CZRB_Size<int>;
template class CZRB_Size<double>;

CZRB_Int32Size::~CZRB_Int32Size() {}
CZRB_DoubleSize::~CZRB_DoubleSize() {}

template class CZRB_Vector<CZRB_Int32Size>;
template class CZRB_List<CZRB_Int32Size>;

CZRB_Int32SizeVector::~CZRB_Int32SizeVector() {}
CZRB_Int32SizeList::~CZRB_Int32SizeList() {}
