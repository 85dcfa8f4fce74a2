#pragma once

// SPLITRISER: risers (main pipes and main leads) split at the storey boundaries of the project's
// floor table, each storey getting a piece named after it. The risers are selected (picks,
// window, crossing), their pieces are listed, and nothing changes until the drafter says yes.
// U takes the whole split back.

namespace kelaz {

void RegisterSplitRiserCommand(const wchar_t* group);

}  // namespace kelaz
