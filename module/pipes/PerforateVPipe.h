#pragma once

// Splitting risers at the storey boundaries of the building ("perforating" them through the
// floors): every storey a riser passes through gets a piece of its own carrying that storey's
// name, so that per-floor plans and per-floor quantities each count their own share.
//
// Both main pipes and main leads are risers here: both are vertical at one plan position and
// carry a floor name, and a cable run up a shaft is counted per floor just as a water riser is.
//
// The storeys are the model manager's (pGetBimInstance): a storey is [bottom, top). A riser is
// cut at every storey bottom and top strictly inside its elevation range; a cut closer than the
// shortest piece the riser's class allows to an end, or to the previous cut, is dropped, so no
// sliver is made. Each piece takes the name of the storey it lies in; a part above, below or
// between the storeys of the table keeps an empty floor name (the table cannot say which floor
// it belongs to, and the drafter sees it marked in the listing). Neighbouring pieces that end up
// with the same name are one piece. Pieces run in the riser's own direction: a riser drawn
// downwards gives pieces drawn downwards, listed from its top.

#include <vector>

#include "host/db/ObjectId.h"
#include "module/entry/LayoutApi.h"
#include "module/pipes/VerPipeInf.h"
#include "suite/model/BimModel.h"

// What applying the plan does to one riser.
enum class EVerPipeChange {
    kSplit,    // erased, and its pieces made in its place
    kRename,   // within one storey: the riser itself takes the storey's name (its handle stays)
    kKeep,     // within one storey and already named after it
    kOutside,  // wholly outside the storeys of the table: left as the drafter drew it
};

// The shortest piece of a main pipe, and of a main lead (the entities' own vertical tests).
inline constexpr double kMinMainPipePiece = 1e-6;
inline constexpr double kMinMainLeadPiece = 0.0001;

// The pieces of the riser record (dBottom, dTop, bDownward, plan position, id and handle are
// read) against the storeys, in the riser's direction. Each piece keeps the riser's id, handle,
// plan position and direction and gets its own floor name, bottom and top.
LAYOUT_API CVerPipeInfList CutVerPipe(const CVerPipeInf& riser,
                                      const std::vector<KelAzStorey>& storeys, double minPiece);

// The planned pieces of one riser, from CVerPipeLists::Planned().
LAYOUT_API CVerPipeInfList PlannedPiecesOf(const AcDbObjectId& riser);
// What applying the plan does to a riser of CVerPipeLists::Risers().
LAYOUT_API EVerPipeChange PlannedChange(const CVerPipeInf& riser);

// Works out the pieces of the main pipes and main leads among ids (other objects are passed
// over) and fills the lists: Risers() the risers, Planned() their pieces riser by riser, Made()
// emptied. With bApply the plan is then carried out as one undo step: a split riser is erased
// and its pieces, copies of it with every other property kept, are appended to its drawing; a
// riser to rename is renamed in place; Made() receives the entities that now stand for the
// pieces (the new ones, and the renamed risers themselves).
// False when the project's storeys cannot be read or ids hold no riser (the lists empty, the
// drawing untouched). With bApply also false when a piece cannot be made (nothing is changed,
// Made() empty) or a riser cannot be changed (it is left whole; the others are done and listed).
LAYOUT_API bool PerforateVPipe(const AcDbObjectIdArray& ids, bool bApply);
