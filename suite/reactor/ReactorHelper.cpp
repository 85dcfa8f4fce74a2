#include "suite/reactor/ReactorHelper.h"

namespace {
int g_flushes = 0;
CString& LastText() {
    static CString text;
    return text;
}
}  // namespace

void KelAzReactorHelper::FlushGraphic(const CString& text) {
    ++g_flushes;
    LastText() = text;
}

int KelAzReactorHelper::FlushCount() { return g_flushes; }

CString KelAzReactorHelper::LastFlushText() { return LastText(); }
