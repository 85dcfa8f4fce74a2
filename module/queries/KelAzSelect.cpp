#include "module/queries/KelAzSelect.h"

#include "host/ed/EditorInput.h"
#include "host/ed/Jig.h"

namespace {

constexpr const wchar_t* kNextPointPrompt = L"\n指定下一点[圆弧(A)/回退(U)]<回车结束>:";
constexpr const wchar_t* kNextPointKeywords = L"A U";

int AskWithReference(AcGePoint3d& point, bool offerReference, const wchar_t* plain,
                     const wchar_t* withKeyword, const wchar_t* afterReference) {
    ads_point picked = {0.0, 0.0, 0.0};
    if (offerReference) acedInitGet(0, L"R");
    int rc = acedGetPoint(nullptr, offerReference ? withKeyword : plain, picked);
    if (rc == RTKWORD) {
        ads_point reference = {0.0, 0.0, 0.0};
        rc = acedGetPoint(nullptr, L"\n指定参考点:", reference);
        if (rc != RTNORM) return rc;
        rc = acedGetPoint(reference, afterReference, picked);
        // Enter right after the reference: the reference itself is the point wanted.
        if (rc == RTNONE) {
            for (int i = 0; i < 3; ++i) picked[i] = reference[i];
            rc = RTNORM;
        }
    }
    if (rc == RTNORM) point.set(picked[0], picked[1], picked[2]);
    return rc;
}

// The next point asked as a drag, so that every cursor move reaches the tracking function.
class TrackingJig : public AcEdJig {
public:
    TrackingJig(const AcGePoint3d& previous, KelAzTrackFun track, double value)
        : m_previous(previous), m_track(track), m_value(value) {}

    int Ask(AcGePoint3d& point) {
        setDispPrompt(kNextPointPrompt);
        setKeywordList(kNextPointKeywords);
        setUserInputControls(kNullResponseAccepted);
        setSpecialCursorType(kRubberBand);
        switch (const DragStatus status = drag()) {
            case kNormal:
                point = m_cursor;
                return RTNORM;
            case kNull:
                return RTNONE;
            case kCancel:
                return RTCAN;
            default:
                return status >= kKW1 ? RTKWORD : RTCAN;
        }
    }

    DragStatus sampler() override {
        const DragStatus status = acquirePoint(m_cursor, m_previous);
        if (status == kNormal) m_track(m_previous, m_cursor, m_value);
        return status;
    }

private:
    AcGePoint3d m_previous;
    AcGePoint3d m_cursor;
    KelAzTrackFun m_track;
    double m_value;
};

}  // namespace

int CKelAzSelect::GetPoint(AcGePoint3d& point, bool offerReference) {
    return AskWithReference(point, offerReference, L"\n指定第一点:", L"\n指定第一点[参考点(R)]:",
                            L"\n指定第一点:");
}

int CKelAzSelect::GetInsertPoint(AcGePoint3d& point, bool offerReference) {
    return AskWithReference(point, offerReference, L"\n指定插入点:", L"\n指定插入点[参考点(R)]:",
                            L"\n请指定插入点:");
}

int CKelAzSelect::GetNextPoint(AcGePoint3d& point, AcGePoint3d previous, KelAzTrackFun track,
                               double value) {
    if (track != nullptr) return TrackingJig(previous, track, value).Ask(point);
    ads_point base = {previous.x, previous.y, previous.z};
    ads_point picked = {0.0, 0.0, 0.0};
    acedInitGet(0, kNextPointKeywords);
    const int rc = acedGetPoint(base, kNextPointPrompt, picked);
    if (rc == RTNORM) point.set(picked[0], picked[1], picked[2]);
    return rc;
}
