#include <gtest/gtest.h>

#include <unistd.h>

#include <boost/crc.hpp>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/app/RxDictionary.h"
#include "host/db/Arc.h"
#include "host/db/Circle.h"
#include "host/db/DrawingFile.h"
#include "host/db/DwgFiler.h"
#include "host/db/Line.h"
#include "host/db/Polyline.h"
#include "host/db/Selection.h"
#include "host/ge/GeConstants.h"
#include "host/gi/WorldDraw.h"
#include "tests/support/DbCheckers.h"

namespace {

// A suite-like entity: a label at a point, pointing at another entity.
class Tag : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(Tag);

    AcGePoint3d at;
    CString label;
    AcDbObjectId target;
    // When set, the record carries one item more than it reads back.
    bool sloppy = false;

    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        AcDbEntity::dwgOutFields(filer);
        filer->writeUInt16(sloppy ? 2 : 1);
        filer->writePoint3d(at);
        filer->writeString(label);
        filer->writeSoftPointerId(target);
        if (sloppy) filer->writeInt32(42);
        return filer->filerStatus();
    }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        AcDbEntity::dwgInFields(filer);
        Adesk::UInt16 version = 0;
        filer->readUInt16(&version);
        filer->readPoint3d(&at);
        filer->readString(label);
        AcDbSoftPointerId id;
        filer->readSoftPointerId(&id);
        target = id;
        return filer->filerStatus();
    }
    Adesk::Boolean worldDraw(AcGiWorldDraw* mode) override {
        mode->geometry().text(at, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 2, 1, 0, label);
        return Adesk::kTrue;
    }
};

}  // namespace

ACRX_DXF_DEFINE_MEMBERS(Tag, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, TAG,
                        KelazTest)

namespace {

using kelaz::test::Append;
using kelaz::test::Filed;
using kelaz::test::Opened;
namespace fs = std::filesystem;

class DrawingFile : public ::testing::Test {
protected:
    void SetUp() override {
        Tag::rxInit();
        dir = fs::temp_directory_path() /
              ("kelaz-dwg-" + std::to_string(::getpid()) + "-" +
               ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(dir);
        fs::create_directories(dir);
    }
    void TearDown() override { fs::remove_all(dir); }

    CString path(const char* name) const { return kelaz::FromUtf8((dir / name).string()); }

    // A drawing with every standard entity, layers, an erased entity and a tag pointing at a line.
    void fill(AcDbDatabase& db) {
        kelaz::test::AddLayer(db, L"给水", 5);
        const AcDbObjectId duct = kelaz::test::AddLayer(db, L"DUCT", 3);
        db.setClayer(duct);
        auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(100, 50, 0));
        line->setLayer(L"给水");
        line->setColorIndex(1);
        lineId = Append(db, line);
        auto* arc = new AcDbArc(AcGePoint3d(10, 10, 0), 5, 0.5, 4);
        arc->setDatabaseDefaults(&db);
        ids.append(Append(db, arc));
        const AcDbObjectId erased =
            Append(db, new AcDbCircle(AcGePoint3d(), AcGeVector3d::kZAxis, 9));
        Opened<AcDbEntity>(erased, AcDb::kForWrite)->erase();
        erasedHandle = erased.handle();
        auto* pl = new AcDbPolyline();
        pl->addVertexAt(0, AcGePoint2d(1, 1), 0.4, 0.1, 0.2);
        pl->addVertexAt(1, AcGePoint2d(8, 1));
        pl->setClosed(Adesk::kTrue);
        ids.append(Append(db, pl));
        ids.append(Append(db, new AcDbCircle(AcGePoint3d(3, 4, 5), AcGeVector3d(0, 1, 0), 2)));
        auto* tag = new Tag();
        tag->at = AcGePoint3d(7, 8, 0);
        tag->label = L"风管 DN100";
        tag->target = lineId;
        tagId = Append(db, tag);
        ids.insertAt(0, lineId);
    }

    static std::vector<std::uint8_t> ReadBytes(const CString& file) {
        std::ifstream in(kelaz::ToUtf8(file), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    static void WriteBytes(const CString& file, const std::vector<std::uint8_t>& bytes) {
        std::ofstream out(kelaz::ToUtf8(file), std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
    }

    fs::path dir;
    AcDbObjectIdArray ids;  // the standard entities, in drawing order
    AcDbObjectId lineId;
    AcDbObjectId tagId;
    AcDbHandle erasedHandle;
};

TEST_F(DrawingFile, SavedAndReopenedWithEveryObjectPropertyAndHandle) {
    AcDbDatabase db;
    fill(db);
    const CString file = path("plan.kdwg");
    ASSERT_EQ(db.saveAs(file), Acad::eOk) << kelaz::ToUtf8(kelaz::LastFileReport(db));
    EXPECT_TRUE(kelaz::LastFileReport(db).IsEmpty());
    for (const auto& entry : fs::directory_iterator(dir)) {
        EXPECT_EQ(entry.path().filename(), "plan.kdwg") << "no temporary file is left";
    }

    AcDbDatabase back(false);
    ASSERT_EQ(back.readDwgFile(file), Acad::eOk) << kelaz::ToUtf8(kelaz::LastFileReport(back));
    const AcDbObjectIdArray reopened = kelaz::test::ModelSpaceIds(back);
    ASSERT_EQ(reopened.length(), ids.length() + 1);
    for (int i = 0; i < ids.length(); ++i) {
        EXPECT_EQ(reopened[i].handle(), ids[i].handle()) << i;
        EXPECT_EQ(reopened[i].objectClass(), ids[i].objectClass()) << i;
        EXPECT_EQ(Filed(reopened[i]), Filed(ids[i])) << "every field of entity " << i;
    }
    {
        Opened<Tag> tag(reopened.last(), AcDb::kForRead);
        ASSERT_TRUE(tag);
        EXPECT_EQ(tag->objectId().handle(), tagId.handle());
        EXPECT_EQ(tag->label, L"风管 DN100");
        EXPECT_EQ(tag->target, reopened[0]) << "a reference comes back to the same object";
    }
    AcDbObjectId missing;
    EXPECT_EQ(back.getAcDbObjectId(missing, false, erasedHandle), Acad::eUnknownHandle)
        << "erased entities are not saved";
    EXPECT_EQ(back.handseed(), db.handseed());
    EXPECT_EQ(back.currentSpaceId().handle(), db.currentSpaceId().handle());
    EXPECT_EQ(back.clayer().handle(), db.clayer().handle());
    {
        Opened<AcDbLayerTableRecord> layer(back.clayer(), AcDb::kForRead);
        CString name;
        layer->getName(name);
        EXPECT_EQ(name, L"DUCT");
        EXPECT_EQ(layer->color().colorIndex(), 3);
    }
    // New objects continue after the saved handles, and the index knows the loaded ones.
    const AcDbObjectId fresh = Append(back, new AcDbLine());
    EXPECT_GE(fresh.handle(), db.handseed());
    EXPECT_EQ(kelaz::SelectWindow(&back, AcGePoint3d(-1, -1, 0), AcGePoint3d(101, 51, 0),
                                  {AcDbLine::desc(), {}}),
              (AcDbObjectIdArray{reopened[0], fresh}));

    // Reading into a drawing that has contents replaces them; old ids answer "erased".
    AcDbDatabase other;
    const AcDbObjectId old = Append(other, new AcDbLine());
    ASSERT_EQ(other.readDwgFile(file), Acad::eOk);
    EXPECT_TRUE(old.isErased());
    EXPECT_FALSE(old.isValid());
    AcDbObject* obj = nullptr;
    EXPECT_EQ(acdbOpenAcDbObject(obj, old, AcDb::kForRead, true), Acad::eWasErased);
    EXPECT_EQ(kelaz::test::ModelSpaceIds(other).length(), ids.length() + 1);
    const wchar_t* name = nullptr;
    other.getFilename(name);
    EXPECT_EQ(CString(name), file);
}

TEST_F(DrawingFile, DamagedFilesAreRefusedAndTheDrawingKeepsItsContents) {
    AcDbDatabase source;
    fill(source);
    const CString good = path("good.kdwg");
    ASSERT_EQ(source.saveAs(good), Acad::eOk);
    const std::vector<std::uint8_t> bytes = ReadBytes(good);

    AcDbDatabase target;
    const AcDbObjectId mine =
        Append(target, new AcDbLine(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 5, 6)));
    const auto mineBefore = Filed(mine);
    const AcDbHandle seedBefore = target.handseed();
    auto expectRefused = [&](const char* name, const std::vector<std::uint8_t>& content,
                             Acad::ErrorStatus status, const wchar_t* why) {
        const CString file = path(name);
        WriteBytes(file, content);
        EXPECT_EQ(target.readDwgFile(file), status) << name;
        const CString report = kelaz::LastFileReport(target);
        EXPECT_NE(report.Find(file), -1) << kelaz::ToUtf8(report);
        EXPECT_NE(report.Find(L"1. "), -1) << kelaz::ToUtf8(report);
        EXPECT_NE(report.Find(why), -1) << kelaz::ToUtf8(report);
        EXPECT_EQ(kelaz::test::ModelSpaceIds(target), (AcDbObjectIdArray{mine})) << name;
        EXPECT_EQ(Filed(mine), mineBefore) << name;
        EXPECT_EQ(target.handseed(), seedBefore) << name;
    };

    std::vector<std::uint8_t> wrongMagic = bytes;
    wrongMagic[0] = 'X';
    expectRefused("magic.kdwg", wrongMagic, Acad::eBadDwgHeader, L"not a drawing");
    expectRefused("text.kdwg", {'h', 'e', 'l', 'l', 'o'}, Acad::eBadDwgHeader, L"not a drawing");

    std::vector<std::uint8_t> flipped = bytes;
    flipped[bytes.size() / 2] ^= 0x10;
    expectRefused("flipped.kdwg", flipped, Acad::eDwgCRCError, L"damaged");

    std::vector<std::uint8_t> truncated(bytes.begin(), bytes.begin() + bytes.size() * 2 / 3);
    expectRefused("truncated.kdwg", truncated, Acad::eEndOfFile, L"truncated");

    std::vector<std::uint8_t> newer = bytes;
    newer[8] = static_cast<std::uint8_t>(kelaz::kDrawingFormatVersion + 1);
    expectRefused("newer.kdwg", newer, Acad::eInvalidDwgVersion, L"newer version");

    EXPECT_EQ(target.readDwgFile(path("absent.kdwg")), Acad::eFileNotFound);
    EXPECT_NE(kelaz::LastFileReport(target).Find(L"no such file"), -1);

    // A class this program does not have: the file is whole, but cannot be understood.
    AcRxObject* tagClass = acrxClassDictionary->remove(L"Tag");
    const CString tagged = path("tagged.kdwg");
    WriteBytes(tagged, bytes);
    EXPECT_EQ(target.readDwgFile(tagged), Acad::eDwgObjectImproperlyRead);
    acrxClassDictionary->atPut(L"Tag", tagClass);
    EXPECT_NE(kelaz::LastFileReport(target).Find(L"unknown class"), -1);
    const CString report = kelaz::LastFileReport(target);
    EXPECT_NE(report.Find(tagId.handle().text() + L" (Tag)"), -1) << kelaz::ToUtf8(report);
    EXPECT_EQ(report.Find(L"2. "), -1) << "one problem: " << kelaz::ToUtf8(report);
    EXPECT_EQ(kelaz::test::ModelSpaceIds(target), (AcDbObjectIdArray{mine}));
}

TEST_F(DrawingFile, RecordsMustBeReadExactlyAndSavesNeedAPlace) {
    AcDbDatabase db;
    auto* tag = new Tag();
    tag->sloppy = true;
    Append(db, tag);
    const CString file = path("sloppy.kdwg");
    ASSERT_EQ(db.saveAs(file), Acad::eOk);
    AcDbDatabase back;
    EXPECT_EQ(back.readDwgFile(file), Acad::eDwgObjectImproperlyRead);
    EXPECT_NE(kelaz::LastFileReport(back).Find(L"left unread"), -1)
        << kelaz::ToUtf8(kelaz::LastFileReport(back));
    EXPECT_EQ(kelaz::test::ModelSpaceIds(back).length(), 0);

    const CString nowhere = path("no/such/dir/plan.kdwg");
    EXPECT_EQ(db.saveAs(nowhere), Acad::eFileAccessErr);
    EXPECT_NE(kelaz::LastFileReport(db).Find(L"cannot create"), -1);

    // An object open for write is not saved half-changed.
    Opened<Tag> open(kelaz::test::ModelSpaceIds(db)[0], AcDb::kForWrite);
    EXPECT_EQ(db.saveAs(path("open.kdwg")), Acad::eWasOpenedForWrite);
    EXPECT_FALSE(fs::exists(dir / "open.kdwg"));
}

}  // namespace
