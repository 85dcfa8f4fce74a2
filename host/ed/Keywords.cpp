#include "host/ed/Keywords.h"

#include <cwctype>

namespace kelaz {

namespace {

bool IsUpper(wchar_t ch) { return std::iswupper(static_cast<wint_t>(ch)) != 0; }

}  // namespace

bool KeywordMatches(const CString& keyword, const CString& typed) {
    if (typed.IsEmpty() || keyword.IsEmpty()) return false;
    if (typed.CompareNoCase(keyword) == 0) return true;
    CString capitals;
    int leading = 0;
    bool inLeadingRun = true;
    for (int i = 0; i < keyword.GetLength(); ++i) {
        const wchar_t ch = keyword[i];
        if (IsUpper(ch)) {
            capitals.AppendChar(ch);
            if (inLeadingRun) ++leading;
        } else {
            inLeadingRun = false;
        }
    }
    if (capitals.IsEmpty()) return false;
    if (typed.CompareNoCase(capitals) == 0) return true;
    // A longer prefix is accepted only when the capitals lead the keyword, as in "BEgin".
    if (leading == 0 || typed.GetLength() < leading || typed.GetLength() > keyword.GetLength()) {
        return false;
    }
    return keyword.Left(typed.GetLength()).CompareNoCase(typed) == 0;
}

KeywordList::KeywordList(const CString& list) {
    bool global = false;
    int start = 0;
    for (CString word = list.Tokenize(L" \t", start); start >= 0;
         word = list.Tokenize(L" \t", start)) {
        if (word == L"_") {
            global = true;
            continue;
        }
        (global ? m_global : m_local).push_back(word);
    }
    // A global part that does not pair up with the local words is ignored.
    if (m_global.size() != m_local.size()) m_global.clear();
}

int KeywordList::Match(const CString& typed) const {
    if (typed.GetLength() > 1 && typed[0] == L'_') {
        const CString word = typed.Mid(1);
        const std::vector<CString>& globals = m_global.empty() ? m_local : m_global;
        for (size_t i = 0; i < globals.size(); ++i) {
            if (KeywordMatches(globals[i], word)) return static_cast<int>(i);
        }
        return -1;
    }
    for (size_t i = 0; i < m_local.size(); ++i) {
        if (KeywordMatches(m_local[i], typed)) return static_cast<int>(i);
    }
    return -1;
}

CString KeywordList::GlobalWord(int index) const {
    if (index < 0 || index >= Count()) return CString();
    return m_global.empty() ? m_local[static_cast<size_t>(index)]
                            : m_global[static_cast<size_t>(index)];
}

}  // namespace kelaz
