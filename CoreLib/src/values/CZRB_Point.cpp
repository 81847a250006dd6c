#include "CZRB_Point.h"

template class CZRB_Point<int>;
template class CZRB_Point<double>;

CZRB_Int32Point::~CZRB_Int32Point() {}
CZRB_DoublePoint::~CZRB_DoublePoint() {}

template class CZRB_Vector<CZRB_Int32Point>;
template class CZRB_List<CZRB_Int32Point>;
template class CZRB_Vector<CZRB_DoublePoint>;
template class CZRB_List<CZRB_DoublePoint>;

CZRB_Int32PointVector::~CZRB_Int32PointVector() {}
CZRB_Int32PointList::~CZRB_Int32PointList() {}
CZRB_DoublePointVector::~CZRB_DoublePointVector() {}
CZRB_DoublePointList::~CZRB_DoublePointList() {}
