#include "host/db/AcadErrorStatus.h"

namespace kelaz {

#define KELAZ_WIDE_(text) L##text
#define KELAZ_WIDE(text) KELAZ_WIDE_(text)

const wchar_t* ErrorText(Acad::ErrorStatus es) {
#define KELAZ_ERROR_STATUS_CASE(name, value) \
    case Acad::name:                         \
        return KELAZ_WIDE(#name);
    switch (es) { KELAZ_ERROR_STATUS_LIST(KELAZ_ERROR_STATUS_CASE) }
#undef KELAZ_ERROR_STATUS_CASE
    return L"Unknown ErrorStatus";
}

}  // namespace kelaz
