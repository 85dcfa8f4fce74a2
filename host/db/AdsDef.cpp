#include "host/db/AdsDef.h"

#include <cstring>

namespace {
// The buffer types whose rstring the list owns.
bool HoldsString(short type) {
    return type == RTSTR || (type >= 0 && type <= 9) || (type >= 100 && type <= 102) ||
           (type >= 300 && type <= 309) || (type >= 410 && type <= 419) ||
           (type >= 430 && type <= 439) || (type >= 470 && type <= 479) || type == 999 ||
           (type >= 1000 && type <= 1003);
}
}  // namespace

resbuf* acutNewRb(int type) {
    auto* rb = new resbuf;
    std::memset(rb, 0, sizeof(resbuf));
    rb->restype = static_cast<short>(type);
    return rb;
}

int acutRelRb(resbuf* rb) {
    while (rb != nullptr) {
        resbuf* next = rb->rbnext;
        if (HoldsString(rb->restype)) delete[] rb->resval.rstring;
        delete rb;
        rb = next;
    }
    return RTNORM;
}
