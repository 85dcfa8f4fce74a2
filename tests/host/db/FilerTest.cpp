#include <gtest/gtest.h>

#include "host/db/Database.h"
#include "host/db/Line.h"
#include "host/db/MemoryDwgFiler.h"
#include "host/db/MemoryDxfFiler.h"
#include "tests/support/DbCheckers.h"
#include "tests/support/GeCheckers.h"

namespace {

using kelaz::MemoryDwgFiler;
using kelaz::MemoryDxfFiler;

TEST(MemoryDwgFiler, EveryValueComesBackAsWritten) {
    MemoryDwgFiler out(AcDb::kCopyFiler);
    const CString text(L"风管 DN100 \U0001F600 end");
    out.writeBool(true);
    out.writeBoolean(Adesk::kTrue);
    out.writeInt8(-5);
    out.writeInt16(-30000);
    out.writeInt32(-2000000000);
    out.writeInt64(-9000000000000000000LL);
    out.writeUInt8(250);
    out.writeUInt16(65000);
    out.writeUInt32(4000000000u);
    out.writeUInt64(18000000000000000000ULL);
    out.writeDouble(-0.1);
    out.writeString(text);
    out.writeString(nullptr);
    out.writeAcDbHandle(AcDbHandle(0xABCDEF));
    out.writePoint2d(AcGePoint2d(1.5, -2.5));
    out.writePoint3d(AcGePoint3d(1, 2, 3));
    out.writeVector2d(AcGeVector2d(4, 5));
    out.writeVector3d(AcGeVector3d(6, 7, 8));
    out.writeScale3d(AcGeScale3d(2, 3, 4));
    const char raw[] = {1, 0, 2};
    out.writeBytes(raw, sizeof(raw));
    out.writeAddress(&out);
    EXPECT_EQ(out.filerStatus(), Acad::eOk);

    MemoryDwgFiler in(out.bytes(), AcDb::kCopyFiler);
    bool b = false;
    Adesk::Boolean bb = 0;
    Adesk::Int8 i8 = 0;
    Adesk::Int16 i16 = 0;
    Adesk::Int32 i32 = 0;
    Adesk::Int64 i64 = 0;
    Adesk::UInt8 u8 = 0;
    Adesk::UInt16 u16 = 0;
    Adesk::UInt32 u32 = 0;
    Adesk::UInt64 u64 = 0;
    double d = 0;
    CString s1, s2 = L"x";
    AcDbHandle h;
    AcGePoint2d p2;
    AcGePoint3d p3;
    AcGeVector2d v2;
    AcGeVector3d v3;
    AcGeScale3d sc;
    char back[3] = {};
    void* address = nullptr;
    in.readBool(&b);
    in.readBoolean(&bb);
    in.readInt8(&i8);
    in.readInt16(&i16);
    in.readInt32(&i32);
    in.readInt64(&i64);
    in.readUInt8(&u8);
    in.readUInt16(&u16);
    in.readUInt32(&u32);
    in.readUInt64(&u64);
    in.readDouble(&d);
    in.readString(s1);
    in.readString(s2);
    in.readAcDbHandle(&h);
    in.readPoint2d(&p2);
    in.readPoint3d(&p3);
    in.readVector2d(&v2);
    in.readVector3d(&v3);
    in.readScale3d(&sc);
    in.readBytes(back, sizeof(back));
    in.readAddress(&address);
    ASSERT_EQ(in.filerStatus(), Acad::eOk);
    EXPECT_TRUE(in.atEnd());
    EXPECT_TRUE(b);
    EXPECT_EQ(bb, Adesk::kTrue);
    EXPECT_EQ(i8, -5);
    EXPECT_EQ(i16, -30000);
    EXPECT_EQ(i32, -2000000000);
    EXPECT_EQ(i64, -9000000000000000000LL);
    EXPECT_EQ(u8, 250);
    EXPECT_EQ(u16, 65000);
    EXPECT_EQ(u32, 4000000000u);
    EXPECT_EQ(u64, 18000000000000000000ULL);
    EXPECT_EQ(d, -0.1);
    EXPECT_EQ(s1, text);
    EXPECT_EQ(s2, L"");
    EXPECT_EQ(h, AcDbHandle(0xABCDEF));
    EXPECT_EQ(p2, AcGePoint2d(1.5, -2.5));
    EXPECT_EQ(p3, AcGePoint3d(1, 2, 3));
    EXPECT_EQ(v2, AcGeVector2d(4, 5));
    EXPECT_EQ(v3, AcGeVector3d(6, 7, 8));
    EXPECT_EQ(sc.sz, 4.0);
    EXPECT_EQ(std::string(back, 3), std::string(raw, 3));
    EXPECT_EQ(address, &out);
}

TEST(MemoryDwgFiler, WrongTypesAndTheEndAreErrorsNotMisreadings) {
    MemoryDwgFiler out(AcDb::kFileFiler);
    out.writeInt32(7);
    out.writeDouble(2.5);
    out.writeBytes("abcd", 4);

    {
        // An Adesk::Boolean is a 32-bit integer, but filed as another item than writeInt32.
        MemoryDwgFiler in(out.bytes(), AcDb::kFileFiler);
        Adesk::Boolean flag = 5;
        EXPECT_EQ(in.readBoolean(&flag), Acad::eFilerError);
        EXPECT_EQ(flag, 0);
        // The error sticks: later reads answer it and read nothing.
        Adesk::Int32 value = 3;
        EXPECT_EQ(in.readInt32(&value), Acad::eFilerError);
        EXPECT_EQ(value, 0);
        EXPECT_EQ(in.tell(), 0u);
        in.resetFilerStatus();
        EXPECT_EQ(in.readInt32(&value), Acad::eOk);
        EXPECT_EQ(value, 7);
    }
    {
        MemoryDwgFiler in(out.bytes(), AcDb::kFileFiler);
        Adesk::Int32 value = 0;
        double real = 0;
        char four[4];
        char three[3];
        in.readInt32(&value);
        in.readDouble(&real);
        EXPECT_EQ(in.readBytes(three, 3), Acad::eFilerError) << "a different byte count";
        MemoryDwgFiler again(out.bytes(), AcDb::kFileFiler);
        again.readInt32(&value);
        again.readDouble(&real);
        EXPECT_EQ(again.readBytes(four, 4), Acad::eOk);
        EXPECT_EQ(again.readDouble(&real), Acad::eEndOfFile);
    }
    {
        // A value cut short is the end of the data, not garbage.
        std::vector<std::uint8_t> cut = out.bytes();
        cut.resize(3);
        MemoryDwgFiler in(cut, AcDb::kFileFiler);
        Adesk::Int32 value = 9;
        EXPECT_EQ(in.readInt32(&value), Acad::eEndOfFile);
        EXPECT_EQ(value, 0);
    }
}

TEST(MemoryDwgFiler, IdsTravelAsHandlesInFilesAndAsStubsInMemory) {
    AcDbDatabase db;
    const AcDbObjectId live = kelaz::test::Append(db, new AcDbLine());
    const AcDbObjectId gone = kelaz::test::Append(db, new AcDbLine());
    {
        kelaz::test::Opened<AcDbLine> line(gone, AcDb::kForWrite);
        line->erase();
    }

    MemoryDwgFiler file(AcDb::kFileFiler, &db);
    file.writeSoftPointerId(live);
    file.writeHardOwnershipId(gone);
    file.writeHardPointerId(AcDbObjectId::kNull);
    file.writeSoftOwnershipId(AcDbObjectId());
    // A file names objects by handle; one that will not be saved is no reference.
    AcDbDatabase other;
    MemoryDwgFiler in(file.bytes(), AcDb::kFileFiler, &other);
    AcDbSoftPointerId a;
    AcDbHardOwnershipId b;
    AcDbHardPointerId c;
    AcDbSoftOwnershipId d;
    in.readSoftPointerId(&a);
    EXPECT_EQ(in.readHardOwnershipId(&b), Acad::eOk);
    in.readHardPointerId(&c);
    in.readSoftOwnershipId(&d);
    ASSERT_EQ(in.filerStatus(), Acad::eOk);
    EXPECT_EQ(a.database(), &other);
    EXPECT_EQ(a.handle(), live.handle());
    EXPECT_FALSE(a.isValid()) << "a stub waiting for the object of that handle";
    EXPECT_TRUE(b.isNull());
    EXPECT_TRUE(c.isNull());
    EXPECT_TRUE(d.isNull());
    // The kind of reference is part of the item.
    MemoryDwgFiler wrongKind(file.bytes(), AcDb::kFileFiler, &other);
    AcDbHardPointerId e;
    EXPECT_EQ(wrongKind.readHardPointerId(&e), Acad::eFilerError);
    MemoryDwgFiler noDatabase(file.bytes(), AcDb::kFileFiler);
    EXPECT_EQ(noDatabase.readSoftPointerId(&a), Acad::eNoDatabase);

    MemoryDwgFiler undo(AcDb::kUndoFiler, &db);
    undo.writeSoftPointerId(gone);
    MemoryDwgFiler undoIn(undo.bytes(), AcDb::kUndoFiler, &db);
    undoIn.readSoftPointerId(&a);
    EXPECT_EQ(a, gone) << "in memory an id stays the id, erased or not";
}

TEST(MemoryDxfFiler, ItemsKeepTheKindTheirCodeTakes) {
    MemoryDxfFiler filer;
    filer.writeItem(AcDb::kDxfSubclass, L"KelTest");
    filer.writeInt16(AcDb::kDxfInt16, 1);
    filer.writeInt32(AcDb::kDxfInt32, 123456);
    filer.writeDouble(AcDb::kDxfReal, 2.5);
    filer.writePoint3d(AcDb::kDxfXCoord, AcGePoint3d(1, 2, 3));
    filer.writeItem(AcDb::kDxfText, CString(L"文字"));
    filer.writeAcDbHandle(AcDb::kDxfHandle, AcDbHandle(0x1F));
    filer.writeBool(AcDb::kDxfBool, true);
    ASSERT_EQ(filer.filerStatus(), Acad::eOk);
    EXPECT_EQ(filer.items().size(), 8u);

    // Text under an integer code, or a value too wide for the code, is refused with a message.
    MemoryDxfFiler bad;
    EXPECT_EQ(bad.writeItem(AcDb::kDxfInt16, L"seventy"), Acad::eInvalidDxfCode);
    EXPECT_NE(std::wstring(bad.errorMessage()).find(L"70"), std::wstring::npos);
    EXPECT_TRUE(bad.items().empty());
    MemoryDxfFiler narrow;
    EXPECT_EQ(narrow.writeInt32(AcDb::kDxfInt16, 70000), Acad::eInvalidDxfCode);

    filer.rewindFiler();
    EXPECT_FALSE(filer.atSubclassData(L"Other")) << "another name is not consumed";
    EXPECT_TRUE(filer.atSubclassData(L"KelTest"));
    resbuf rb;
    ASSERT_EQ(filer.readItem(&rb), Acad::eOk);
    EXPECT_EQ(rb.restype, 70);
    EXPECT_EQ(rb.resval.rint, 1);
    ASSERT_EQ(filer.readItem(&rb), Acad::eOk);
    EXPECT_EQ(rb.resval.rlong, 123456);
    // One item can be given back, once.
    EXPECT_EQ(filer.pushBackItem(), Acad::eOk);
    ASSERT_EQ(filer.readResBuf(&rb), Acad::eOk);
    EXPECT_EQ(rb.restype, 90);
    ASSERT_EQ(filer.readItem(&rb), Acad::eOk);
    EXPECT_EQ(rb.resval.rreal, 2.5);
    ASSERT_EQ(filer.readItem(&rb), Acad::eOk);
    EXPECT_EQ(rb.restype, 10);
    EXPECT_EQ(rb.resval.rpoint[2], 3.0);
    ASSERT_EQ(filer.readItem(&rb), Acad::eOk);
    EXPECT_EQ(std::wstring(rb.resval.rstring), L"文字");
    ASSERT_EQ(filer.readItem(&rb), Acad::eOk);
    EXPECT_EQ(std::wstring(rb.resval.rstring), L"1F");
    EXPECT_FALSE(filer.atEndOfObject());
    ASSERT_EQ(filer.readItem(&rb), Acad::eOk);
    EXPECT_EQ(rb.resval.rint, 1);
    EXPECT_TRUE(filer.atEOF());
    EXPECT_TRUE(filer.atEndOfObject());
    EXPECT_EQ(filer.readItem(&rb), Acad::eEndOfFile);
    EXPECT_EQ(filer.pushBackItem(), Acad::eBadDxfSequence) << "nothing was read just now";
}

TEST(MemoryDxfFiler, SetErrorKeepsTheFormattedMessage) {
    MemoryDxfFiler filer;
    EXPECT_EQ(
        filer.setError(Acad::eInvalidDxfCode, L"Error: expected object version group code %d", 70),
        Acad::eInvalidDxfCode);
    EXPECT_EQ(filer.filerStatus(), Acad::eInvalidDxfCode);
    EXPECT_EQ(std::wstring(filer.errorMessage()), L"Error: expected object version group code 70");
    // In error the filer refuses more items.
    EXPECT_EQ(filer.writeInt16(AcDb::kDxfInt16, 1), Acad::eInvalidDxfCode);
    EXPECT_TRUE(filer.items().empty());
    filer.resetFilerStatus();
    EXPECT_EQ(filer.filerStatus(), Acad::eOk);
    EXPECT_EQ(std::wstring(filer.errorMessage()), L"");
    EXPECT_EQ(filer.setError(L"note %s", L"only"), Acad::eOk);
    EXPECT_EQ(std::wstring(filer.errorMessage()), L"note only");
}

}  // namespace
