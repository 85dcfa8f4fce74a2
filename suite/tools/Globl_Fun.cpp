#include "suite/tools/Globl_Fun.h"

void CGlobl_Fun::StrToStrAry(const CString& text, CStringArray& items, wchar_t separator) {
    items.RemoveAll();
    if (text.IsEmpty()) return;
    int start = 0;
    for (int at = text.Find(separator); at >= 0; at = text.Find(separator, start)) {
        items.Add(text.Mid(start, at - start));
        start = at + 1;
    }
    items.Add(text.Mid(start));
}
