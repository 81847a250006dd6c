#include "CZRB_Rect.h"

template class CZRB_Rect<int>;
template class CZRB_Rect<double>;

CZRB_Int32Rect::~CZRB_Int32Rect() {}
CZRB_DoubleRect::~CZRB_DoubleRect() {}

template class CZRB_Vector<CZRB_Int32Rect>;
template class CZRB_List<CZRB_Int32Rect>;
template class CZRB_Vector<CZRB_DoubleRect>;
template class CZRB_List<CZRB_DoubleRect>;

CZRB_Int32RectVector::~CZRB_Int32RectVector() {}
CZRB_Int32RectList::~CZRB_Int32RectList() {}
CZRB_DoubleRectVector::~CZRB_DoubleRectVector() {}
CZRB_DoubleRectList::~CZRB_DoubleRectList() {}
