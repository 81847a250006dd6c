#include "CZRB_Rect.h"

template class CZRB_Rect<int>;
template class CZRB_Rect<double>;

CZRB_Int32Rect::~CZRB_Int32Rect() {}
CZRB_DoubleRect::~CZRB_DoubleRect() {}
