#include "host/ed/Jig.h"

#include "host/db/Entity.h"
#include "host/ed/Answer.h"
#include "host/ed/Ask.h"
#include "host/ed/Editor.h"
#include "host/ed/Keywords.h"
#include "host/gi/GiCollector.h"

using kelaz::Editor;

AcEdJig::DragStatus AcEdJig::sampler() { return kNoChange; }

Adesk::Boolean AcEdJig::update() { return Adesk::kFalse; }

AcDbEntity* AcEdJig::entity() const { return nullptr; }

void AcEdJig::setDispPrompt(const ACHAR* format, ...) {
    va_list args;
    va_start(args, format);
    m_prompt.FormatV(format, args);
    va_end(args);
}

AcEdJig::Event AcEdJig::ReadEvent() {
    Editor* ed = kelaz::CurrentEditor();
    Event event;
    if (ed == nullptr) return event;
    const kelaz::KeywordList keywords{CString(m_keywords)};
    while (true) {
        // The prompt is shown once per drag, and again after a wrong answer; cursor samples
        // follow it silently.
        const CString prompt = m_prompted ? CString() : m_prompt;
        m_prompted = true;
        CString line;
        if (!ed->ReadLine(prompt, Editor::LineKind::kAnswer, line)) {
            ed->ShowCancel();
            return event;
        }
        const kelaz::Answer answer = kelaz::ParseAnswer(line);
        switch (answer.kind) {
            case kelaz::Answer::Kind::kDrag:
            case kelaz::Answer::Kind::kPoint: {
                const AcGePoint3d point = kelaz::ResolvePoint(*ed, answer.point, answer.relative);
                if (!kelaz::WithinDrawingExtent(point)) {
                    ed->NoteRefusal();
                    ed->Print(L"\n" + kelaz::OutsideExtentMessage());
                    break;
                }
                event.point = point;
                if (answer.kind == kelaz::Answer::Kind::kDrag) {
                    event.kind = Event::Kind::kMove;
                    event.query = answer.query;
                } else {
                    event.kind = Event::Kind::kAccept;
                    if ((m_controls & kDontUpdateLastPoint) == 0) ed->SetLastPoint(point);
                }
                return event;
            }
            case kelaz::Answer::Kind::kWord: {
                const int index = keywords.Match(answer.text);
                if (index >= 0 && index < kKW9) {
                    event.kind = Event::Kind::kKeyword;
                    event.keyword = index + 1;
                    ed->SetLastKeyword(keywords.GlobalWord(index));
                    return event;
                }
                ed->NoteRefusal();
                ed->Print(L"\n需要点或选项关键字。");
                break;
            }
            case kelaz::Answer::Kind::kEnter:
                if ((m_controls & kNullResponseAccepted) != 0) {
                    event.kind = Event::Kind::kNull;
                    return event;
                }
                ed->NoteRefusal();
                ed->Print(L"\n需要点或选项关键字。");
                break;
            case kelaz::Answer::Kind::kCancel:
                ed->ShowCancel();
                return event;
            case kelaz::Answer::Kind::kMalformed:
                ed->NoteRefusal();
                ed->Print(L"\n" + answer.text);
                break;
            case kelaz::Answer::Kind::kTransparent:
            case kelaz::Answer::Kind::kComment:
                continue;
        }
        m_prompted = false;
    }
}

AcEdJig::DragStatus AcEdJig::Answer(const Event& event, AcGePoint3d& point) {
    switch (event.kind) {
        case Event::Kind::kMove:
        case Event::Kind::kAccept:
            point = event.point;
            return kNormal;
        case Event::Kind::kKeyword:
            return static_cast<DragStatus>(event.keyword);
        case Event::Kind::kNull:
            return kNull;
        case Event::Kind::kCancel:
            return kCancel;
    }
    return kCancel;
}

AcEdJig::DragStatus AcEdJig::acquirePoint(AcGePoint3d& point) {
    // Read here, not before the sampler runs: the sampler sets the keywords and controls the
    // answer is read with. A sampler that acquires twice in one sample reads on.
    const Event event = ReadEvent();
    m_acquired = true;
    m_lastKind = event.kind;
    m_lastQuery = event.query;
    return Answer(event, point);
}

AcEdJig::DragStatus AcEdJig::acquirePoint(AcGePoint3d& point, const AcGePoint3d& /*basePnt*/) {
    return acquirePoint(point);
}

void AcEdJig::DrawPreview() {
    Editor* ed = kelaz::CurrentEditor();
    AcDbEntity* shown = entity();
    if (ed != nullptr && shown != nullptr) ed->SetDragPreview(kelaz::DrawEntity(*shown));
}

void AcEdJig::PrintPreview() {
    Editor* ed = kelaz::CurrentEditor();
    if (ed == nullptr) return;
    const kelaz::GiPrimitiveList& preview = ed->DragPreview();
    CString text = kelaz::FormatText(L"\n预览: %d 段", static_cast<int>(preview.size()));
    for (const kelaz::GiPrimitive& primitive : preview) {
        const auto* polyline = std::get_if<kelaz::GiPolyline>(&primitive.shape);
        if (polyline == nullptr) continue;
        text += L"\n ";
        for (size_t i = 0; i < polyline->points.size(); ++i) {
            const AcGePoint3d& p = polyline->points[i];
            text += kelaz::FormatText(L" (%.3f,%.3f)", p.x, p.y);
            if (i + 1 < polyline->points.size() && i < polyline->bulges.size() &&
                polyline->bulges[i] != 0.0)
                text += kelaz::FormatText(L" 凸度%.6f", polyline->bulges[i]);
        }
    }
    ed->Print(text + L"\n");
}

AcEdJig::DragStatus AcEdJig::drag() {
    Editor* ed = kelaz::CurrentEditor();
    if (ed == nullptr) return kCancel;
    ed->SetDragging(true);
    m_prompted = false;
    while (true) {
        m_acquired = false;
        const DragStatus sampled = sampler();
        // A sampler that never acquires would wait forever: the input moves on without it.
        if (!m_acquired) {
            const Event event = ReadEvent();
            m_lastKind = event.kind;
            m_lastQuery = event.query;
        }
        if (m_lastKind == Event::Kind::kMove || m_lastKind == Event::Kind::kAccept) {
            if (sampled == kNormal) {
                update();
                DrawPreview();
            }
            if (m_lastKind == Event::Kind::kMove) {
                if (m_lastQuery) PrintPreview();
                continue;
            }
        }
        ed->SetDragging(false);
        switch (m_lastKind) {
            case Event::Kind::kAccept:
                // Accepting where the cursor already was is still an accepted point.
                return sampled == kNoChange ? kNormal : sampled;
            case Event::Kind::kCancel:
                return kCancel;
            case Event::Kind::kNull:
                return kNull;
            default:  // a keyword: what the sampler made of it
                return sampled;
        }
    }
}
