#include "host/ed/HostCommands.h"

#include <cmath>

#include "host/db/Arc.h"
#include "host/db/BlockTable.h"
#include "host/db/Database.h"
#include "host/db/HostApplicationServices.h"
#include "host/db/Ocs.h"
#include "host/db/OpenObject.h"
#include "host/db/Polyline.h"
#include "host/db/Selection.h"
#include "host/db/UndoLog.h"
#include "host/ed/Answer.h"
#include "host/ed/CommandStack.h"
#include "host/ed/Editor.h"
#include "host/ed/EntitySelection.h"
#include "host/ed/Keywords.h"
#include "host/ge/CircArc3d.h"
#include "host/ge/Point2d.h"

namespace kelaz {

namespace {

using Step = HostCommand::Step;

// Three points closer to a line than this make no arc.
constexpr double kMinArcRadius = 1e-9;

const wchar_t* const kNothingToUndo = L"\n已全部放弃。";

Acad::ErrorStatus AppendToModelSpace(AcDbDatabase* db, AcDbEntity* entity) {
    AcDbBlockTable* table = nullptr;
    Acad::ErrorStatus es = db->getBlockTable(table, AcDb::kForRead);
    if (es != Acad::eOk) return es;
    AcDbBlockTableRecord* model = nullptr;
    es = table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForWrite);
    table->close();
    if (es != Acad::eOk) return es;
    entity->setDatabaseDefaults(db);
    es = model->appendAcDbEntity(entity);
    model->close();
    if (es == Acad::eOk) entity->close();
    return es;
}

// Reports a step back: what it undid ("*放弃* RECTLAYOUT"; a mark met on the way), or why it
// could not be done.
void ReportUndo(Editor& editor, Acad::ErrorStatus es, const UndoLog& undo) {
    if (es == Acad::eNothingToUndo) {
        editor.Print(kNothingToUndo);
    } else if (es != Acad::eOk) {
        editor.Print(L"\n有对象正被打开，不能放弃。");
    } else {
        for (const CString& name : undo.lastUndone()) {
            editor.Print(name.IsEmpty() ? CString(L"\n遇到标记") : L"\n*放弃* " + name);
        }
    }
}

// ARC by start point, second point and end point. The arc is stored counter-clockwise about +Z:
// picked clockwise, it runs from the end point to the start point.
class ArcCommand : public HostCommand {
public:
    explicit ArcCommand(Editor& editor) : m_editor(editor) {}

    CString Prompt() const override {
        static const wchar_t* const prompts[] = {L"\n指定圆弧的起点: ", L"\n指定圆弧的第二个点: ",
                                                 L"\n指定圆弧的端点: "};
        return prompts[m_count];
    }

    Step Feed(const CommandInput& input) override {
        if (input.kind == CommandInput::Kind::kEnter) return Step::kDone;
        if (input.kind != CommandInput::Kind::kPoint) {
            m_editor.Print(L"\n需要点。");
            return Step::kRefused;
        }
        m_points[m_count++] = input.point;
        if (m_count < 3) return Step::kMore;
        Draw();
        return Step::kDone;
    }

private:
    void Draw() {
        const AcGeCircArc3d arc(m_points[0], m_points[1], m_points[2]);
        if (arc.radius() < kMinArcRadius) {
            m_editor.NoteRefusal();
            m_editor.Print(L"\n三点在一条直线上，不能画圆弧。");
            return;
        }
        AcGeVector3d normal = arc.normal();
        AcGePoint3d start = m_points[0];
        AcGePoint3d end = m_points[2];
        if (normal.z < 0.0) {
            normal = -normal;
            std::swap(start, end);
        }
        const AcGePoint3d center = arc.center();
        auto* entity = new AcDbArc(center, normal, arc.radius(), OcsAngle(normal, start - center),
                                   OcsAngle(normal, end - center));
        AcDbDatabase* db = CommandDatabase(m_editor);
        if (db == nullptr) {
            delete entity;
            return;
        }
        UndoLog& undo = db->undoLog();
        undo.beginGroup(L"ARC");
        if (AppendToModelSpace(db, entity) != Acad::eOk) {
            delete entity;
            m_editor.Print(L"\n圆弧不能加入图形。");
        }
        undo.endGroup();
    }

    Editor& m_editor;
    AcGePoint3d m_points[3];
    int m_count = 0;
};

// PLINE: straight segments point by point; A turns to arcs, each given by a second point and
// an end point; L back to straight; U takes the last vertex back; C closes; Enter ends. The
// polyline lies at the start point's elevation with +Z as its normal, and is added to the
// drawing when it ends with two vertices or more.
class PlineCommand : public HostCommand {
public:
    explicit PlineCommand(Editor& editor) : m_editor(editor) {}

    CString Prompt() const override {
        switch (m_mode) {
            case Mode::kStart:
                return L"\n指定起点: ";
            case Mode::kLine:
                return L"\n指定下一点或 [圆弧(A)/闭合(C)/放弃(U)]: ";
            case Mode::kArcSecond:
                return L"\n指定圆弧的第二个点或 [直线(L)/放弃(U)]: ";
            case Mode::kArcEnd:
                return L"\n指定圆弧的端点: ";
        }
        return CString();
    }

    Step Feed(const CommandInput& input) override {
        if (input.kind == CommandInput::Kind::kEnter) {
            Draw(false);
            return Step::kDone;
        }
        if (input.kind == CommandInput::Kind::kWord) return Keyword(input.text);
        if (input.kind != CommandInput::Kind::kPoint) {
            m_editor.Print(L"\n需要点或选项关键字。");
            return Step::kRefused;
        }
        const AcGePoint3d p(input.point.x, input.point.y, m_elevation);
        if (m_mode == Mode::kStart) {
            m_elevation = input.point.z;
            m_vertices.push_back({AcGePoint3d(p.x, p.y, m_elevation), 0.0});
            m_mode = Mode::kLine;
            return Step::kMore;
        }
        if (p.isEqualTo(m_mode == Mode::kArcEnd ? m_second : m_vertices.back().point)) {
            m_editor.Print(L"\n与上一点重合，请重新指定。");
            return Step::kRefused;
        }
        if (m_mode == Mode::kArcSecond) {
            m_second = p;
            m_mode = Mode::kArcEnd;
            return Step::kMore;
        }
        if (m_mode == Mode::kArcEnd) {
            const AcGeCircArc3d arc(m_vertices.back().point, m_second, p);
            m_mode = Mode::kArcSecond;
            if (arc.radius() < kMinArcRadius) {
                m_editor.NoteRefusal();
                m_editor.Print(L"\n三点在一条直线上，不能画圆弧。");
                return Step::kMore;
            }
            // Counter-clockwise about +Z is a positive bulge.
            const double quarter = std::tan((arc.endAng() - arc.startAng()) / 4.0);
            m_vertices.back().bulge = arc.normal().z < 0.0 ? -quarter : quarter;
        }
        m_vertices.push_back({p, 0.0});
        return Step::kMore;
    }

private:
    enum class Mode { kStart, kLine, kArcSecond, kArcEnd };
    struct Vertex {
        AcGePoint3d point;
        double bulge;
    };

    Step Keyword(const CString& text) {
        const KeywordList keywords(m_mode == Mode::kLine ? L"Arc Close Undo" : L"Line Undo");
        const int index =
            m_mode == Mode::kStart || m_mode == Mode::kArcEnd ? -1 : keywords.Match(text);
        const CString word = index >= 0 ? keywords.GlobalWord(index) : CString();
        if (word == L"Arc") {
            m_mode = Mode::kArcSecond;
        } else if (word == L"Line") {
            m_mode = Mode::kLine;
        } else if (word == L"Undo") {
            m_vertices.pop_back();
            if (m_vertices.empty()) {
                m_mode = Mode::kStart;
            } else {
                m_vertices.back().bulge = 0.0;
            }
        } else if (word == L"Close") {
            if (m_vertices.size() < 3) {
                m_editor.Print(L"\n至少要两段才能闭合。");
                return Step::kRefused;
            }
            Draw(true);
            return Step::kDone;
        } else {
            m_editor.Print(L"\n需要点或选项关键字。");
            return Step::kRefused;
        }
        return Step::kMore;
    }

    void Draw(bool closed) {
        AcDbDatabase* db = CommandDatabase(m_editor);
        if (db == nullptr || m_vertices.size() < 2) return;
        auto* pline = new AcDbPolyline(static_cast<unsigned int>(m_vertices.size()));
        for (const Vertex& v : m_vertices) {
            pline->addVertexAt(pline->numVerts(), AcGePoint2d(v.point.x, v.point.y), v.bulge);
        }
        pline->setElevation(m_elevation);
        pline->setClosed(closed ? Adesk::kTrue : Adesk::kFalse);
        UndoLog& undo = db->undoLog();
        undo.beginGroup(L"PLINE");
        if (AppendToModelSpace(db, pline) != Acad::eOk) {
            delete pline;
            m_editor.Print(L"\n多段线不能加入图形。");
        }
        undo.endGroup();
    }

    Editor& m_editor;
    Mode m_mode = Mode::kStart;
    std::vector<Vertex> m_vertices;
    AcGePoint3d m_second;
    double m_elevation = 0.0;
};

// UNDO: a number of steps, or a mark (M), back to the mark (B), a group of the user's (BE, E).
class UndoCommand : public HostCommand {
public:
    explicit UndoCommand(Editor& editor) : m_editor(editor), m_keywords(L"BEgin End Mark Back") {}

    CString Prompt() const override {
        return L"\n输入要放弃的操作数目或 [开始(BE)/结束(E)/标记(M)/后退(B)] <1>: ";
    }

    Step Feed(const CommandInput& input) override {
        AcDbDatabase* db = CommandDatabase(m_editor);
        if (db == nullptr) return Step::kDone;
        UndoLog& undo = db->undoLog();
        if (input.kind == CommandInput::Kind::kEnter) {
            ReportUndo(m_editor, undo.undoGroups(1), undo);
            return Step::kDone;
        }
        if (input.kind == CommandInput::Kind::kWord) {
            double count = 0.0;
            if (ParseDecimal(input.text, count) && count >= 1.0 &&
                count == static_cast<int>(count)) {
                ReportUndo(m_editor, undo.undoGroups(static_cast<int>(count)), undo);
                return Step::kDone;
            }
            switch (m_keywords.Match(input.text)) {
                case 0:
                    undo.beginGroup();
                    return Step::kDone;
                case 1:
                    undo.endGroup();
                    return Step::kDone;
                case 2:
                    undo.addMark();
                    return Step::kDone;
                case 3:
                    BackToMark(undo);
                    return Step::kDone;
                default:
                    break;
            }
        }
        m_editor.Print(L"\n需要正整数或选项关键字。");
        return Step::kRefused;
    }

private:
    void BackToMark(UndoLog& undo) {
        if (!undo.canUndo()) {
            m_editor.Print(kNothingToUndo);
            return;
        }
        bool markFound = false;
        const Acad::ErrorStatus es = undo.undoToMark(&markFound);
        ReportUndo(m_editor, es, undo);
        if (es == Acad::eOk && !markFound) {
            m_editor.Print(L"\n没有标记：已放弃全部操作。");
        }
    }

    Editor& m_editor;
    KeywordList m_keywords;
};

// U: one step back.
class UCommand : public HostCommand {
public:
    explicit UCommand(Editor& editor) : m_editor(editor) {}
    Step Start() override {
        if (AcDbDatabase* db = CommandDatabase(m_editor)) {
            ReportUndo(m_editor, db->undoLog().undoGroups(1), db->undoLog());
        }
        return Step::kDone;
    }
    CString Prompt() const override { return CString(); }
    Step Feed(const CommandInput&) override { return Step::kDone; }

private:
    Editor& m_editor;
};

// ERASE: selects objects until Enter, then erases them as one undo step.
class EraseCommand : public HostCommand {
public:
    explicit EraseCommand(Editor& editor) : m_editor(editor), m_selection(editor) {}

    CString Prompt() const override { return m_selection.Prompt(); }

    Step Feed(const CommandInput& input) override {
        const Step step = m_selection.Feed(input);
        if (step == Step::kDone) Erase();
        return step;
    }

private:
    void Erase() {
        AcDbDatabase* db = CommandDatabase(m_editor);
        if (db == nullptr || m_selection.Selected().isEmpty()) return;
        db->undoLog().beginGroup(L"ERASE");
        for (const AcDbObjectId& id : m_selection.Selected()) {
            AcDbObject* object = nullptr;
            if (acdbOpenAcDbObject(object, id, AcDb::kForWrite) != Acad::eOk) continue;
            object->erase();
            object->close();
        }
        db->undoLog().endGroup();
    }

    Editor& m_editor;
    SelectionPrompt m_selection;
};

}  // namespace

AcDbDatabase* CommandDatabase(const Editor& editor) {
    return editor.database() != nullptr ? editor.database()
                                        : acdbHostApplicationServices()->workingDatabase();
}

SelectionPrompt::SelectionPrompt(Editor& editor) : m_editor(editor) {}

CString SelectionPrompt::Prompt() const {
    switch (m_state) {
        case State::kObjects:
            return L"\n选择对象 [窗口(W)/窗交(C)]: ";
        case State::kWindowFirst:
        case State::kCrossingFirst:
            return L"\n指定第一个角点: ";
        case State::kWindowSecond:
        case State::kCrossingSecond:
            return L"\n指定对角点: ";
    }
    return CString();
}

void SelectionPrompt::Add(const AcDbObjectIdArray& found) {
    int added = 0;
    for (const AcDbObjectId& id : found) {
        if (m_selected.contains(id)) continue;
        m_selected.append(id);
        ++added;
    }
    if (found.isEmpty()) {
        m_editor.Print(L"\n未找到对象。");
    } else {
        m_editor.Print(FormatText(L"\n找到 %d 个，总计 %d 个", added, m_selected.length()));
    }
}

HostCommand::Step SelectionPrompt::Feed(const CommandInput& input) {
    AcDbDatabase* db = CommandDatabase(m_editor);
    switch (m_state) {
        case State::kObjects:
            switch (input.kind) {
                case CommandInput::Kind::kEnter:
                    return Step::kDone;
                case CommandInput::Kind::kPoint: {
                    const AcDbObjectId id = PickEntity(db, input.point);
                    AcDbObjectIdArray found;
                    if (!id.isNull()) found.append(id);
                    Add(found);
                    return Step::kMore;
                }
                case CommandInput::Kind::kEntity: {
                    AcDbObjectIdArray found;
                    if (!input.id.isNull() && !input.id.isErased()) found.append(input.id);
                    Add(found);
                    return Step::kMore;
                }
                case CommandInput::Kind::kWord: {
                    const KeywordList keywords(L"Window Crossing");
                    const int index = keywords.Match(input.text);
                    if (index >= 0) {
                        m_state = index == 0 ? State::kWindowFirst : State::kCrossingFirst;
                        return Step::kMore;
                    }
                    m_editor.Print(L"\n需要点或选项关键字。");
                    return Step::kRefused;
                }
            }
            break;
        case State::kWindowFirst:
        case State::kCrossingFirst:
            if (input.kind != CommandInput::Kind::kPoint) break;
            m_corner = input.point;
            m_state =
                m_state == State::kWindowFirst ? State::kWindowSecond : State::kCrossingSecond;
            return Step::kMore;
        case State::kWindowSecond:
        case State::kCrossingSecond:
            if (input.kind != CommandInput::Kind::kPoint) break;
            Add(m_state == State::kWindowSecond ? SelectWindow(db, m_corner, input.point)
                                                : SelectCrossing(db, m_corner, input.point));
            m_state = State::kObjects;
            return Step::kMore;
    }
    m_editor.Print(L"\n需要点。");
    return Step::kRefused;
}

const std::vector<HostCommandInfo>& HostCommandList() {
    static const std::vector<HostCommandInfo> list = {
        {L"ARC", L"三点画圆弧：起点、第二个点、端点"},
        {L"PLINE", L"多段线：逐点画直线段，A 画圆弧段（第二个点、端点），L 回到直线，C 闭合"},
        {L"ERASE", L"删除选中的对象（点选，W 窗口，C 窗交，回车结束）"},
        {L"U", L"放弃上一步"},
        {L"UNDO", L"放弃若干步；M 设标记，B 回到标记，BE/E 成组"},
    };
    return list;
}

std::unique_ptr<HostCommand> MakeHostCommand(Editor& editor, const CString& typedName) {
    const CString name = BareCommandName(typedName);
    if (name.CompareNoCase(L"ARC") == 0) return std::make_unique<ArcCommand>(editor);
    if (name.CompareNoCase(L"PLINE") == 0) return std::make_unique<PlineCommand>(editor);
    if (name.CompareNoCase(L"UNDO") == 0) return std::make_unique<UndoCommand>(editor);
    if (name.CompareNoCase(L"U") == 0) return std::make_unique<UCommand>(editor);
    if (name.CompareNoCase(L"ERASE") == 0) return std::make_unique<EraseCommand>(editor);
    return nullptr;
}

}  // namespace kelaz
