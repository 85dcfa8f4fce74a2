#pragma once

// A drag: the host asks the jig for samples of the cursor (sampler), lets it update its entity
// when a sample moved (update), and draws the entity as the preview. Cursor samples come from
// the command line's input: "drag x,y" moves the cursor (the sampler runs, and on kNormal the
// entity is updated and drawn; nothing is accepted), a point accepts (the sampler runs with it
// and drag answers kNormal), a keyword of the list answers its kKWn, Enter answers kNull when
// null responses are accepted, a cancel kCancel.

#include <cstdarg>

#include "host/AdAChar.h"
#include "host/Adesk.h"
#include "host/ge/Point3d.h"
#include "host/text/CString.h"

class AcDbEntity;

class AcEdJig {
public:
    enum DragStatus {
        kModeless = -17,
        kNoChange = -6,
        kCancel = -4,
        kOther = -3,
        kNull = -1,
        kNormal = 0,
        kKW1 = 1,
        kKW2,
        kKW3,
        kKW4,
        kKW5,
        kKW6,
        kKW7,
        kKW8,
        kKW9,
    };

    enum UserInputControls {
        kGovernedByOrthoMode = 0x000001,
        kNullResponseAccepted = 0x000002,
        kDontEchoCancelForCtrlC = 0x000004,
        kDontUpdateLastPoint = 0x000008,
        kNoDwgLimitsChecking = 0x000010,
        kNoZeroResponseAccepted = 0x000020,
        kNoNegativeResponseAccepted = 0x000040,
        kAccept3dCoordinates = 0x000080,
        kAcceptMouseUpAsPoint = 0x000100,
        kAnyBlankTerminatesInput = 0x000200,
        kInitialBlankTerminatesInput = 0x000400,
        kAcceptOtherInputString = 0x000800,
        kGovernedByUCSDetect = 0x001000,
        kNoZDirectionOrtho = 0x002000,
        kImpliedFaceForUCSChange = 0x004000,
        kUseBasePointElevation = 0x008000,
        kDisableDirectDistanceInput = 0x010000,
    };

    enum CursorType {
        kNoSpecialCursor = -1,
        kCrosshair = 0,
        kRectCursor,
        kRubberBand,
        kNotRotated,
        kTargetBox,
        kRotatedCrosshair,
        kCrosshairNoRotate,
        kInvisible,
        kEntitySelect,
        kParallelogram,
        kEntitySelectNoPersp,
        kPkfirstOrGrips,
        kCrosshairDashed,
    };

    AcEdJig() = default;
    virtual ~AcEdJig() = default;
    AcEdJig(const AcEdJig&) = delete;
    AcEdJig& operator=(const AcEdJig&) = delete;

    // Runs the drag until a point is accepted, a keyword given, Enter (when accepted) or a
    // cancel. Input that runs out is a cancel.
    DragStatus drag();
    virtual DragStatus sampler();
    virtual Adesk::Boolean update();
    virtual AcDbEntity* entity() const;

    // The point of the sample: kNormal with the point, kKWn for a keyword, kNull for Enter,
    // kCancel. The base point only draws the rubber band.
    DragStatus acquirePoint(AcGePoint3d& point);
    DragStatus acquirePoint(AcGePoint3d& point, const AcGePoint3d& basePnt);

    const ACHAR* dispPrompt() const { return m_prompt.GetString(); }
    // printf-style, as acutPrintf.
    void setDispPrompt(const ACHAR* format, ...);
    const ACHAR* keywordList() const { return m_keywords.GetString(); }
    void setKeywordList(const ACHAR* keywords) { m_keywords = keywords; }
    UserInputControls userInputControls() const { return m_controls; }
    void setUserInputControls(UserInputControls controls) { m_controls = controls; }
    CursorType specialCursorType() const { return m_cursor; }
    void setSpecialCursorType(CursorType cursor) { m_cursor = cursor; }

protected:
    // Whether the point of this sample was taken (rather than the cursor moved).
    bool sampleAccepts() const { return m_lastKind == Event::Kind::kAccept; }

private:
    // One event of the drag, read from the input.
    struct Event {
        enum class Kind { kMove, kAccept, kKeyword, kNull, kCancel };
        Kind kind = Kind::kCancel;
        AcGePoint3d point;
        int keyword = 0;     // 1-based
        bool query = false;  // "drag x,y ?": print the preview after this sample
    };
    Event ReadEvent();
    DragStatus Answer(const Event& event, AcGePoint3d& point);
    void DrawPreview();
    // The preview's segments as text on the command line.
    void PrintPreview();

    CString m_prompt;
    CString m_keywords;
    UserInputControls m_controls = static_cast<UserInputControls>(0);
    CursorType m_cursor = kNoSpecialCursor;

    // Whether the sampler acquired during this sample, and what the last answer was.
    bool m_acquired = false;
    Event::Kind m_lastKind = Event::Kind::kCancel;
    bool m_lastQuery = false;
    bool m_prompted = false;
};
