#include "host/ge/Scale3d.h"

#include "host/ge/Matrix3d.h"

AcGeMatrix3d& AcGeScale3d::getMatrix(AcGeMatrix3d& mat) const {
    mat.setToIdentity();
    mat.entry[0][0] = sx;
    mat.entry[1][1] = sy;
    mat.entry[2][2] = sz;
    return mat;
}
