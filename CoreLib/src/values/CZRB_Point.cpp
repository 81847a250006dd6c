#include "CZRB_Point.h"

template class CZRB_Point<int>;
template class CZRB_Point<double>;

CZRB_Int32Point::~CZRB_Int32Point() {}
CZRB_DoublePoint::~CZRB_DoublePoint() {}
