// The one header the suite's other modules include: this file is built from it alone, so a class
// or free function it stops bringing in breaks the build of the module's tests.

#include "module/entry/LayoutExports.h"

#include <type_traits>

static_assert(std::is_class_v<CDispGlobaFun> && std::is_class_v<CDispUtils>);
static_assert(std::is_class_v<CCalcPositionInRect> && std::is_class_v<CDisposeOnCurve> &&
              std::is_class_v<CDisposeOnSector>);
static_assert(std::is_class_v<CDealPunEntity> && std::is_class_v<CDealLineEntity> &&
              std::is_class_v<StandardData>);
static_assert(std::is_class_v<CKelAzSelect> && std::is_class_v<CKelAzSelectFun> &&
              std::is_class_v<CHighLightVector>);
static_assert(std::is_class_v<CSetEntType> && std::is_class_v<CInitCmd> &&
              std::is_class_v<CKeyWordDlg> && std::is_class_v<CManageUndo>);
static_assert(std::is_class_v<CPickLevel> && std::is_class_v<CLevelDlg> &&
              std::is_class_v<CMultiLine>);
static_assert(std::is_default_constructible_v<CDrawSoftPipe> &&
              std::is_copy_constructible_v<CDrawSoftPipe> &&
              std::has_virtual_destructor_v<CDrawSoftPipe>);
static_assert(
    std::is_same_v<decltype(&CDrawSoftPipe::Draw), Acad::ErrorStatus (CDrawSoftPipe::*)()>);
static_assert(std::is_class_v<CVerPipeLists> && std::is_class_v<CVerPipeInf>);
static_assert(std::is_same_v<decltype(&PerforateVPipe), bool (*)(const AcDbObjectIdArray&, bool)>);
static_assert(std::is_same_v<decltype(&CutVerPipe),
                             CVerPipeInfList (*)(const CVerPipeInf&,
                                                 const std::vector<KelAzStorey>&, double)>);
static_assert(std::is_same_v<decltype(&PlannedPiecesOf), CVerPipeInfList (*)(const AcDbObjectId&)>);
static_assert(std::is_same_v<decltype(&PlannedChange), EVerPipeChange (*)(const CVerPipeInf&)>);
static_assert(
    std::is_same_v<decltype(&acrxEntryPoint), AcRx::AppRetCode (*)(AcRx::AppMsgCode, void*)>);
static_assert(std::is_same_v<decltype(&kelaz::CurrentLevel), double& (*)()>);
static_assert(std::is_same_v<decltype(&kelaz::InitLayoutClasses), void (*)()>);
static_assert(
    std::is_same_v<KelAzTrackFun, void (*)(const AcGePoint3d&, const AcGePoint3d&, double)>);
static_assert(std::is_class_v<CDocReactor> && std::is_class_v<AsdkDataManager<CDocData>> &&
              std::is_same_v<CDocDataManager, AsdkDataManager<CDocData>>);
static_assert(std::is_class_v<MultiPipeRow> && std::is_class_v<CMultiPipeRowStore> &&
              std::is_class_v<CVerPipeInf> && std::is_class_v<CVerPipeLists>);
static_assert(std::is_same_v<decltype(&kelaz::LoadLayoutModule), bool (*)()> &&
              std::is_same_v<decltype(&kelaz::UnloadLayoutModule), bool (*)()> &&
              std::is_same_v<decltype(&kelaz::LoadedDocReactor), CDocReactor* (*)()>);
static_assert(std::is_class_v<CMLineDlg> && std::is_class_v<CMultiPipeJig> &&
              std::is_base_of_v<CLevelDlg, CDrawMlead>);
static_assert(std::is_same_v<decltype(&pAddMlead), void (*)()>);
static_assert(std::is_same_v<decltype(&kelaz::multipipe::OffsetPath),
                             kelaz::multipipe::OffsetStatus (*)(
                                 const std::vector<kelaz::multipipe::PathPiece>&, double, double,
                                 std::vector<kelaz::multipipe::LinePiece>&)>);
