// libFuzzer target for the command line's answer grammar: any bytes, read as a typed line, must
// parse without a crash or a sanitizer report, and the keyword matcher must take any word and
// any list. Built and run by scripts/fuzz-answers.sh.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "host/ed/Answer.h"
#include "host/ed/Keywords.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const CString line = kelaz::FromUtf8(bytes);
    const kelaz::Answer answer = kelaz::ParseAnswer(line);
    if (answer.kind == kelaz::Answer::Kind::kPoint || answer.kind == kelaz::Answer::Kind::kDrag) {
        if (!std::isfinite(answer.point.x) || !std::isfinite(answer.point.y) ||
            !std::isfinite(answer.point.z)) {
            std::abort();
        }
    }
    // The first half as a keyword list, the second as the typed word.
    const std::size_t half = size / 2;
    const kelaz::KeywordList keywords(kelaz::FromUtf8(bytes.substr(0, half)));
    const int index = keywords.Match(kelaz::FromUtf8(bytes.substr(half)));
    if (index >= keywords.Count()) std::abort();
    (void)keywords.GlobalWord(index);
    return 0;
}
