#pragma once

// A keyword list as acedInitGet and AcEdJig::setKeywordList take it: words separated by blanks,
// each with its abbreviation in capitals ("Arc Undo", "A U", "BEgin"). An optional "_" splits
// the local words from their global (language-neutral) counterparts in the same order:
// "Arc Undo _ Arc Undo".
//
// A typed word matches a keyword, without regard to case, when it is the whole keyword, its
// capitals, or a prefix of it at least as long as its leading capitals. With no capitals the
// whole keyword must be typed. A word that starts with '_' is matched against the global words.
// The first keyword that matches wins.

#include <vector>

#include "host/text/CString.h"

namespace kelaz {

class KeywordList {
public:
    KeywordList() = default;
    explicit KeywordList(const CString& list);

    bool IsEmpty() const { return m_local.empty(); }
    int Count() const { return static_cast<int>(m_local.size()); }
    // The index of the keyword the word matches, -1 when none.
    int Match(const CString& typed) const;
    // The keyword as the list names it, global form when the list has one.
    CString GlobalWord(int index) const;

private:
    std::vector<CString> m_local;
    std::vector<CString> m_global;
};

// True when typed is an accepted spelling of keyword by the rule above.
bool KeywordMatches(const CString& keyword, const CString& typed);

}  // namespace kelaz
