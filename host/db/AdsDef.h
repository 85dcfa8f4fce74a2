#pragma once

// The host's C-level types: entity names, points and result buffers, with the result and value
// type codes of its C API (RTNORM, RTSTR, ...).

#include "host/Adesk.h"

using ads_real = double;
using ads_point = ads_real[3];
// An entity name: the first element carries the object's stub, the second is unused.
using ads_name = Adesk::LongPtr[2];
using ads_pointp = ads_real*;
using ads_namep = Adesk::LongPtr*;

struct ads_binary {
    short clen;
    char* buf;
};

union ads_u_val {
    ads_real rreal;
    ads_real rpoint[3];
    short rint;
    wchar_t* rstring;
    Adesk::LongPtr rlname[2];
    Adesk::Int32 rlong;
    Adesk::Int64 mnInt64;
    ads_binary rbinary;
    unsigned char ihandle[8];
};

// One value with its type code (an RT* code, or a DXF group code when it comes from a DXF
// filer), linked into a list through rbnext.
struct resbuf {
    resbuf* rbnext;
    short restype;
    ads_u_val resval;
};

// Results of the C API's functions.
inline constexpr int RTNONE = 5000;
inline constexpr int RTNORM = 5100;
inline constexpr int RTERROR = -5001;
inline constexpr int RTCAN = -5002;
inline constexpr int RTREJ = -5003;
inline constexpr int RTFAIL = -5004;
inline constexpr int RTKWORD = -5005;
inline constexpr int RTINPUTTRUNCATED = -5008;

// Value types of result buffers.
inline constexpr int RTREAL = 5001;
inline constexpr int RTPOINT = 5002;
inline constexpr int RTSHORT = 5003;
inline constexpr int RTANG = 5004;
inline constexpr int RTSTR = 5005;
inline constexpr int RTENAME = 5006;
inline constexpr int RTPICKS = 5007;
inline constexpr int RTORINT = 5008;
inline constexpr int RT3DPOINT = 5009;
inline constexpr int RTLONG = 5010;
inline constexpr int RTVOID = 5014;
inline constexpr int RTLB = 5016;
inline constexpr int RTLE = 5017;
inline constexpr int RTDOTE = 5018;
inline constexpr int RTNIL = 5019;
inline constexpr int RTDXF0 = 5020;
inline constexpr int RTT = 5021;
inline constexpr int RTRESBUF = 5023;

// A new result buffer of the given type, zeroed, with no successor. Free with acutRelRb.
resbuf* acutNewRb(int type);
// Frees a list of result buffers, with the strings (allocated with new wchar_t[]) of those whose
// type holds one.
int acutRelRb(resbuf* rb);
