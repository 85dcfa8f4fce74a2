#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <boost/crc.hpp>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/app/RxDictionary.h"
#include "host/db/Arc.h"
#include "host/db/Circle.h"
#include "host/db/DrawingFile.h"
#include "host/db/DwgFiler.h"
#include "host/db/Line.h"
#include "host/db/MemoryDwgFiler.h"
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
        EXPECT_EQ(report.Find(L"不能读取图形 " + file + L"：\n  1. "), 0) << kelaz::ToUtf8(report);
        EXPECT_NE(report.Find(why), -1) << kelaz::ToUtf8(report);
        EXPECT_EQ(kelaz::test::ModelSpaceIds(target), (AcDbObjectIdArray{mine})) << name;
        EXPECT_EQ(Filed(mine), mineBefore) << name;
        EXPECT_EQ(target.handseed(), seedBefore) << name;
    };

    std::vector<std::uint8_t> wrongMagic = bytes;
    wrongMagic[0] = 'X';
    expectRefused("magic.kdwg", wrongMagic, Acad::eBadDwgHeader, L"不是本程序的图形");
    expectRefused("text.kdwg", {'h', 'e', 'l', 'l', 'o'}, Acad::eBadDwgHeader, L"不是本程序的图形");

    std::vector<std::uint8_t> flipped = bytes;
    flipped[bytes.size() / 2] ^= 0x10;
    expectRefused("flipped.kdwg", flipped, Acad::eDwgCRCError, L"已损坏");

    std::vector<std::uint8_t> truncated(bytes.begin(), bytes.begin() + bytes.size() * 2 / 3);
    expectRefused("truncated.kdwg", truncated, Acad::eEndOfFile, L"不完整");

    std::vector<std::uint8_t> newer = bytes;
    newer[8] = static_cast<std::uint8_t>(kelaz::kDrawingFormatVersion + 1);
    expectRefused("newer.kdwg", newer, Acad::eInvalidDwgVersion, L"较新的版本");

    EXPECT_EQ(target.readDwgFile(path("absent.kdwg")), Acad::eFileNotFound);
    EXPECT_NE(kelaz::LastFileReport(target).Find(L"1. 文件不存在。"), -1);

    // A class this program does not have: the file is whole, but cannot be understood.
    AcRxObject* tagClass = acrxClassDictionary->remove(L"Tag");
    const CString tagged = path("tagged.kdwg");
    WriteBytes(tagged, bytes);
    EXPECT_EQ(target.readDwgFile(tagged), Acad::eDwgObjectImproperlyRead);
    acrxClassDictionary->atPut(L"Tag", tagClass);
    EXPECT_NE(kelaz::LastFileReport(target).Find(L"未知的类"), -1);
    const CString report = kelaz::LastFileReport(target);
    EXPECT_NE(report.Find(tagId.handle().text() + L"（Tag）"), -1) << kelaz::ToUtf8(report);
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
    EXPECT_NE(kelaz::LastFileReport(back).Find(L"没有读到"), -1)
        << kelaz::ToUtf8(kelaz::LastFileReport(back));
    EXPECT_EQ(kelaz::test::ModelSpaceIds(back).length(), 0);

    const CString nowhere = path("no/such/dir/plan.kdwg");
    EXPECT_EQ(db.saveAs(nowhere), Acad::eFileAccessErr);
    EXPECT_NE(kelaz::LastFileReport(db).Find(L"不存在"), -1);

    // An object open for write is not saved half-changed.
    Opened<Tag> open(kelaz::test::ModelSpaceIds(db)[0], AcDb::kForWrite);
    EXPECT_EQ(db.saveAs(path("open.kdwg")), Acad::eWasOpenedForWrite);
    EXPECT_FALSE(fs::exists(dir / "open.kdwg"));
}

mode_t ModeOf(const fs::path& file) {
    struct stat st {};
    EXPECT_EQ(::stat(file.c_str(), &st), 0) << file;
    return st.st_mode & 07777;
}

std::vector<std::string> Names(const fs::path& dir) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(dir)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

TEST_F(DrawingFile, SavesKeepTheModeFollowLinksAndRefuseWhatMayNotBeReplaced) {
    AcDbDatabase db;
    fill(db);
    const fs::path plan = dir / "plan.kdw";
    ASSERT_EQ(db.saveAs(path("plan.kdw")), Acad::eOk);
    for (const mode_t mode : {0640, 0664, 0600}) {
        ASSERT_EQ(::chmod(plan.c_str(), mode), 0);
        ASSERT_EQ(db.saveAs(path("plan.kdw")), Acad::eOk);
        EXPECT_EQ(ModeOf(plan), mode) << std::oct << mode;
    }

    // Through a link the file it names is written, and the link stays a link.
    fs::create_symlink("plan.kdw", dir / "link.kdw");
    Append(db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0)));
    ASSERT_EQ(db.saveAs(path("link.kdw")), Acad::eOk) << kelaz::ToUtf8(kelaz::LastFileReport(db));
    EXPECT_TRUE(fs::is_symlink(dir / "link.kdw"));
    EXPECT_EQ(ModeOf(plan), 0600);
    AcDbDatabase back(false);
    ASSERT_EQ(back.readDwgFile(path("plan.kdw")), Acad::eOk);
    EXPECT_EQ(kelaz::test::ModelSpaceIds(back).length(), ids.length() + 2);
    fs::create_symlink("made.kdw", dir / "dangling.kdw");
    ASSERT_EQ(db.saveAs(path("dangling.kdw")), Acad::eOk);
    EXPECT_TRUE(fs::is_symlink(dir / "dangling.kdw"));
    EXPECT_TRUE(kelaz::IsDrawingFile(path("made.kdw")));

    // Refused, each left as it was and said why: a read-only file, a folder, a named pipe, links
    // that go round in a circle.
    ASSERT_EQ(::chmod(plan.c_str(), 0444), 0);
    const std::vector<std::uint8_t> before = ReadBytes(path("plan.kdw"));
    fs::create_directory(dir / "folder.kdw");
    ASSERT_EQ(::mkfifo((dir / "pipe.kdw").c_str(), 0644), 0);
    fs::create_symlink("loop-b.kdw", dir / "loop-a.kdw");
    fs::create_symlink("loop-a.kdw", dir / "loop-b.kdw");
    const std::pair<const char*, const wchar_t*> refused[] = {
        {"plan.kdw", L"只读"},     {"link.kdw", L"只读"},       {"folder.kdw", L"文件夹"},
        {"pipe.kdw", L"命名管道"}, {"loop-a.kdw", L"符号链接"},
    };
    for (const auto& [name, why] : refused) {
        EXPECT_EQ(db.saveAs(path(name)), Acad::eFileAccessErr) << name;
        const CString report = kelaz::LastFileReport(db);
        EXPECT_NE(report.Find(L"1. "), -1) << kelaz::ToUtf8(report);
        EXPECT_NE(report.Find(why), -1) << kelaz::ToUtf8(report);
        EXPECT_EQ(report.Find(L".tmp-"), -1) << kelaz::ToUtf8(report);
    }
    EXPECT_EQ(ReadBytes(path("plan.kdw")), before);
    EXPECT_EQ(ModeOf(plan), 0444);
    EXPECT_TRUE(fs::is_fifo(dir / "pipe.kdw"));
    EXPECT_EQ(Names(dir),
              (std::vector<std::string>{"dangling.kdw", "folder.kdw", "link.kdw", "loop-a.kdw",
                                        "loop-b.kdw", "made.kdw", "pipe.kdw", "plan.kdw"}))
        << "no temporary file is left";
}

TEST_F(DrawingFile, TemporariesOfSavesThatEndedAreRemovedAtTheNextSave) {
    // A process that has ended: nothing answers to its number any more.
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) ::_exit(0);
    ASSERT_EQ(::waitpid(child, nullptr, 0), child);
    const std::string ended = std::to_string(child);
    const std::string running = std::to_string(::getppid());
    const std::vector<std::string> left = {
        "plan.kdw.tmp-" + ended + "-0",        // killed while saving
        "plan.kdw.tmp-" + ended + "-7.kdw",    //
        "plan.kdw.tmp-" + running + "-1.kdw",  // a save in flight in another process
        "other.kdw.tmp-" + ended + "-0.kdw",   // another drawing's
        "plan.kdw.tmp-notes",                  // not a temporary file at all
    };
    for (const std::string& name : left) WriteBytes(path(name.c_str()), {1, 2, 3});

    AcDbDatabase db;
    fill(db);
    ASSERT_EQ(db.saveAs(path("plan.kdw")), Acad::eOk);
    std::vector<std::string> kept = {"plan.kdw", left[2], left[3], left[4]};
    std::sort(kept.begin(), kept.end());
    EXPECT_EQ(Names(dir), kept);
}

TEST_F(DrawingFile, FoldersPipesAndDevicesAreRefusedAtOnce) {
    AcDbDatabase db;
    fill(db);
    ASSERT_EQ(db.saveAs(path("plan.kdw")), Acad::eOk);
    fs::create_directory(dir / "folder.kdw");
    // Opening a pipe nobody writes to would wait for ever.
    ASSERT_EQ(::mkfifo((dir / "pipe.kdw").c_str(), 0644), 0);
    WriteBytes(path("text.kdw"), {'h', 'i'});

    AcDbDatabase target;
    const std::pair<CString, const wchar_t*> refused[] = {
        {path("folder.kdw"), L"这是一个文件夹"},
        {path("pipe.kdw"), L"这是一个命名管道"},
        {L"/dev/null", L"这是一个设备"},
        {path("plan.kdw/below.kdw"), L"文件无法打开或读取"},
    };
    for (const auto& [file, why] : refused) {
        EXPECT_EQ(target.readDwgFile(file), Acad::eFileAccessErr) << kelaz::ToUtf8(file);
        const CString report = kelaz::LastFileReport(target);
        EXPECT_NE(report.Find(file), -1) << kelaz::ToUtf8(report);
        EXPECT_NE(report.Find(CString(L"1. ") + why), -1) << kelaz::ToUtf8(report);
        EXPECT_FALSE(kelaz::IsDrawingFile(file)) << kelaz::ToUtf8(file);
    }
    EXPECT_TRUE(kelaz::IsDrawingFile(path("plan.kdw")));
    EXPECT_FALSE(kelaz::IsDrawingFile(path("text.kdw")));
    EXPECT_FALSE(kelaz::IsDrawingFile(path("absent.kdw")));
}

// Replaces every copy of value's bits in bytes and makes the checksum match again.
void PutInPlaceOf(std::vector<std::uint8_t>& bytes, double value, double replacement) {
    std::uint8_t from[8], to[8];
    std::memcpy(from, &value, 8);
    std::memcpy(to, &replacement, 8);
    int replaced = 0;
    for (size_t i = 0; i + 8 <= bytes.size() - 4; ++i) {
        if (std::memcmp(&bytes[i], from, 8) == 0) {
            std::memcpy(&bytes[i], to, 8);
            ++replaced;
        }
    }
    ASSERT_GT(replaced, 0);
    boost::crc_32_type crc;
    crc.process_bytes(bytes.data(), bytes.size() - 4);
    for (int i = 0; i < 4; ++i) {
        bytes[bytes.size() - 4 + i] = static_cast<std::uint8_t>(crc.checksum() >> (8 * i));
    }
}

TEST_F(DrawingFile, NumbersThatAreNotFiniteAreDamageAndAreNeverSaved) {
    AcDbDatabase db;
    const AcDbObjectId line =
        Append(db, new AcDbLine(AcGePoint3d(12345.25, 1, 0), AcGePoint3d(2, 3, 0)));
    ASSERT_EQ(db.saveAs(path("good.kdw")), Acad::eOk);
    const std::vector<std::uint8_t> good = ReadBytes(path("good.kdw"));
    for (const double bad : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        std::vector<std::uint8_t> bytes = good;
        PutInPlaceOf(bytes, 12345.25, bad);
        WriteBytes(path("bad.kdw"), bytes);
        AcDbDatabase back;
        EXPECT_EQ(back.readDwgFile(path("bad.kdw")), Acad::eDwgObjectImproperlyRead) << bad;
        const CString report = kelaz::LastFileReport(back);
        EXPECT_NE(report.Find(line.handle().text() + L"（AcDbLine）：记录中有不是有限值的数"), -1)
            << kelaz::ToUtf8(report);
        EXPECT_EQ(kelaz::test::ModelSpaceIds(back).length(), 0);
    }

    // Files take no such number; undo records, which never leave the process, take any.
    kelaz::MemoryDwgFiler file(AcDb::kFileFiler);
    EXPECT_EQ(file.writePoint3d(AcGePoint3d(0, std::nan(""), 0)), Acad::eInvalidInput);
    EXPECT_TRUE(file.bytes().empty());
    kelaz::MemoryDwgFiler undo(AcDb::kUndoFiler);
    EXPECT_EQ(undo.writeDouble(HUGE_VAL), Acad::eOk);
    kelaz::MemoryDwgFiler undoBack(undo.bytes(), AcDb::kUndoFiler);
    double read = 0;
    EXPECT_EQ(undoBack.readDouble(&read), Acad::eOk);
    EXPECT_EQ(read, HUGE_VAL);
}

}  // namespace
