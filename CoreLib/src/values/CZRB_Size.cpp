#include "CZRB_Size.h"

template class CZRB_Size<int>;
template class CZRB_Size<double>;

CZRB_Int32Size::~CZRB_Int32Size() {}
CZRB_DoubleSize::~CZRB_DoubleSize() {}
