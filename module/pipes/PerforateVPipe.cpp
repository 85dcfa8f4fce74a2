#include "module/pipes/PerforateVPipe.h"

#include <algorithm>
#include <memory>

#include "host/db/OpenObject.h"
#include "host/ed/CommandProcessor.h"
#include "host/ed/EditorInput.h"
#include "suite/entities/KelAzMainLead.h"
#include "suite/entities/KelAzMainPipe.h"
#include "suite/entities/MainPipeInfo.h"
#include "suite/tools/ModelSpace.h"

namespace {

// The riser's record and the shortest piece its class allows; false for any other object.
template <class T>
bool DescribeAs(const AcDbEntity* entity, double minPiece, CVerPipeInf& rec, double& min) {
    const T* riser = T::cast(entity);
    if (riser == nullptr) return false;
    const MainPipeInfo info = riser->GetMainPipeInfo();
    CString floor;
    if (!kelaz::GetMainPipeFloorName(info, floor)) return false;
    rec.id = entity->objectId();
    rec.strHandle = entity->handle().text();
    rec.strFloor = floor;
    rec.dBottom = std::min(info.z1, info.z2);
    rec.dTop = std::max(info.z1, info.z2);
    rec.bDownward = info.z1 > info.z2;
    rec.dX = info.x;
    rec.dY = info.y;
    min = minPiece;
    return true;
}

bool ReadRiser(const AcDbObjectId& id, CVerPipeInf& rec, double& minPiece) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenAcDbEntity(entity, id, AcDb::kForRead) != Acad::eOk) return false;
    const bool riser = DescribeAs<KelAzMainPipe>(entity, kMinMainPipePiece, rec, minPiece) ||
                       DescribeAs<KelAzMainLead>(entity, kMinMainLeadPiece, rec, minPiece);
    entity->close();
    return riser;
}

const KelAzStorey* StoreyHolding(const std::vector<KelAzStorey>& storeys, double z) {
    for (const KelAzStorey& s : storeys) {
        if (z >= s.dBottom && z < s.dTop) return &s;
    }
    return nullptr;
}

// The entity's riser description changed to the piece's floor and ends; the plan position is the
// piece's (the riser's own).
template <class T>
Acad::ErrorStatus ReshapeAs(AcDbEntity* entity, const CVerPipeInf& piece) {
    T* riser = T::cast(entity);
    if (riser == nullptr) return Acad::eWrongObjectType;
    MainPipeInfo info;
    if (!kelaz::SetMainPipeFloorName(info, piece.strFloor)) return Acad::eInvalidInput;
    info.z1 = piece.bDownward ? piece.dTop : piece.dBottom;
    info.z2 = piece.bDownward ? piece.dBottom : piece.dTop;
    info.x = piece.dX;
    info.y = piece.dY;
    return riser->SetMainPipeInfo(info);
}

Acad::ErrorStatus Reshape(AcDbEntity* entity, const CVerPipeInf& piece) {
    if (KelAzMainPipe::cast(entity) != nullptr) return ReshapeAs<KelAzMainPipe>(entity, piece);
    return ReshapeAs<KelAzMainLead>(entity, piece);
}

// The floor name alone, in place: the riser keeps its handle and everything else.
template <class T>
Acad::ErrorStatus RenameAs(AcDbEntity* entity, const CString& floor) {
    T* riser = T::cast(entity);
    if (riser == nullptr) return Acad::eWrongObjectType;
    MainPipeInfo info = riser->GetMainPipeInfo();
    if (!kelaz::SetMainPipeFloorName(info, floor)) return Acad::eInvalidInput;
    return riser->SetMainPipeInfo(info);
}

Acad::ErrorStatus Rename(AcDbEntity* entity, const CString& floor) {
    if (KelAzMainPipe::cast(entity) != nullptr) return RenameAs<KelAzMainPipe>(entity, floor);
    return RenameAs<KelAzMainLead>(entity, floor);
}

// Copies of the riser, one per planned piece; empty when any of them cannot be made.
std::vector<std::unique_ptr<AcDbEntity>> MakePieces(const CVerPipeInf& riser) {
    std::vector<std::unique_ptr<AcDbEntity>> made;
    AcDbEntity* original = nullptr;
    if (acdbOpenAcDbEntity(original, riser.id, AcDb::kForRead) != Acad::eOk) return made;
    for (const auto& piece : PlannedPiecesOf(riser.id)) {
        std::unique_ptr<AcDbEntity> copy(AcDbEntity::cast(original->clone()));
        if (copy == nullptr || Reshape(copy.get(), *piece) != Acad::eOk) {
            made.clear();
            break;
        }
        made.push_back(std::move(copy));
    }
    original->close();
    return made;
}

// The changes of one application are one step of the drafter's undo, whoever calls: the host's
// UNDO Begin/End, sent quietly (nested in a command's own group they are part of it).
class UndoGroup {
public:
    UndoGroup() { Send(L"BE"); }
    ~UndoGroup() { Send(L"E"); }
    UndoGroup(const UndoGroup&) = delete;
    UndoGroup& operator=(const UndoGroup&) = delete;

private:
    static void Send(const wchar_t* option) {
        resbuf echo{};
        const bool known = acedGetVar(L"CMDECHO", &echo) == RTNORM;
        resbuf quiet{};
        quiet.restype = RTSHORT;
        quiet.resval.rint = 0;
        acedSetVar(L"CMDECHO", &quiet);
        acedCommand(RTSTR, L"UNDO", RTSTR, option, RTNONE);
        if (known) acedSetVar(L"CMDECHO", &echo);
    }
};

bool Plan(const AcDbObjectIdArray& ids) {
    CVerPipeLists::ClearAll();
    const KelAzBimModel* model = pGetBimInstance();
    if (model == nullptr) return false;
    CVerPipeInfList& risers = CVerPipeLists::Risers();
    CVerPipeInfList& planned = CVerPipeLists::Planned();
    for (int i = 0; i < ids.length(); ++i) {
        // An object named twice is one riser.
        if (ids.find(ids[i]) != i) continue;
        CVerPipeInf rec;
        double minPiece = kMinMainPipePiece;
        if (!ReadRiser(ids[i], rec, minPiece)) continue;
        risers.push_back(boost::shared_ptr<CVerPipeInf>(new CVerPipeInf(rec)));
        const CVerPipeInfList pieces = CutVerPipe(rec, model->Storeys(), minPiece);
        planned.insert(planned.end(), pieces.begin(), pieces.end());
    }
    return !risers.empty();
}

}  // namespace

CVerPipeInfList CutVerPipe(const CVerPipeInf& riser, const std::vector<KelAzStorey>& storeys,
                           double minPiece) {
    std::vector<double> bounds;
    for (const KelAzStorey& s : storeys) {
        bounds.push_back(s.dBottom);
        bounds.push_back(s.dTop);
    }
    std::sort(bounds.begin(), bounds.end());
    std::vector<double> cuts = {riser.dBottom};
    for (double b : bounds) {
        if (b - cuts.back() > minPiece && riser.dTop - b > minPiece) cuts.push_back(b);
    }
    cuts.push_back(riser.dTop);

    CVerPipeInfList pieces;
    for (size_t i = 0; i + 1 < cuts.size(); ++i) {
        // The middle of a piece lies in one storey or in none; its ends may be on boundaries.
        const KelAzStorey* storey = StoreyHolding(storeys, (cuts[i] + cuts[i + 1]) / 2);
        const CString floor = storey != nullptr ? storey->strName : CString();
        if (!pieces.empty() && pieces.back()->strFloor == floor) {
            pieces.back()->dTop = cuts[i + 1];
            continue;
        }
        auto piece = boost::shared_ptr<CVerPipeInf>(new CVerPipeInf(riser));
        piece->strFloor = floor;
        piece->dBottom = cuts[i];
        piece->dTop = cuts[i + 1];
        pieces.push_back(piece);
    }
    if (riser.bDownward) std::reverse(pieces.begin(), pieces.end());
    return pieces;
}

CVerPipeInfList PlannedPiecesOf(const AcDbObjectId& riser) {
    CVerPipeInfList pieces;
    for (const auto& piece : CVerPipeLists::Planned()) {
        if (piece->id == riser) pieces.push_back(piece);
    }
    return pieces;
}

EVerPipeChange PlannedChange(const CVerPipeInf& riser) {
    const CVerPipeInfList pieces = PlannedPiecesOf(riser.id);
    if (pieces.size() > 1) return EVerPipeChange::kSplit;
    if (pieces.empty()) return EVerPipeChange::kKeep;
    const CString& floor = pieces.front()->strFloor;
    if (floor.IsEmpty()) return EVerPipeChange::kOutside;
    return floor == riser.strFloor ? EVerPipeChange::kKeep : EVerPipeChange::kRename;
}

bool PerforateVPipe(const AcDbObjectIdArray& ids, bool bApply) {
    if (!Plan(ids)) return false;
    if (!bApply) return true;

    // Every piece is made in memory (and every new name checked) first, so that a piece that
    // cannot be made changes nothing.
    struct Split {
        boost::shared_ptr<CVerPipeInf> riser;
        std::vector<std::unique_ptr<AcDbEntity>> pieces;
    };
    std::vector<Split> splits;
    for (const auto& riser : CVerPipeLists::Risers()) {
        const EVerPipeChange change = PlannedChange(*riser);
        if (change == EVerPipeChange::kRename &&
            PlannedPiecesOf(riser->id).front()->strFloor.GetLength() > kelaz::kMaxFloorNameLength)
            return false;
        if (change != EVerPipeChange::kSplit) continue;
        Split split{riser, MakePieces(*riser)};
        if (split.pieces.empty()) return false;
        splits.push_back(std::move(split));
    }

    bool done = true;
    CVerPipeInfList& made = CVerPipeLists::Made();
    UndoGroup group;
    for (const auto& riser : CVerPipeLists::Risers()) {
        const EVerPipeChange change = PlannedChange(*riser);
        if (change != EVerPipeChange::kSplit && change != EVerPipeChange::kRename) continue;
        AcDbEntity* entity = nullptr;
        if (acdbOpenAcDbEntity(entity, riser->id, AcDb::kForWrite) != Acad::eOk) {
            done = false;
            continue;
        }
        if (change == EVerPipeChange::kRename) {
            const CVerPipeInfList pieces = PlannedPiecesOf(riser->id);
            if (Rename(entity, pieces.front()->strFloor) == Acad::eOk) {
                made.push_back(pieces.front());
            } else {
                done = false;
            }
            entity->close();
            continue;
        }
        AcDbDatabase* db = entity->database();
        const bool erased = entity->erase() == Acad::eOk;
        entity->close();
        if (!erased) {
            done = false;
            continue;
        }
        auto split = std::find_if(splits.begin(), splits.end(),
                                  [&](const Split& s) { return s.riser == riser; });
        const CVerPipeInfList pieces = PlannedPiecesOf(riser->id);
        for (size_t i = 0; i < pieces.size(); ++i) {
            AcDbObjectId id;
            if (addToModelSpace(id, split->pieces[i].get(), db) != Acad::eOk) {
                done = false;
                continue;
            }
            split->pieces[i].release();  // the drawing owns it now
            auto rec = boost::shared_ptr<CVerPipeInf>(new CVerPipeInf(*pieces[i]));
            rec->id = id;
            rec->strHandle = id.handle().text();
            made.push_back(rec);
        }
    }
    return done;
}
