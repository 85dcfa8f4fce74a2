#include "host/db/DrawingFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <boost/crc.hpp>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

#include "host/app/RxClass.h"
#include "host/app/RxDictionary.h"
#include "host/db/BlockTable.h"
#include "host/db/Database.h"
#include "host/db/DatabaseImpl.h"
#include "host/db/Entity.h"
#include "host/db/FileReplace.h"
#include "host/db/LayerTable.h"
#include "host/db/MemoryDwgFiler.h"

namespace kelaz {

namespace {

constexpr char kMagic[8] = {'K', 'E', 'L', 'A', 'Z', 'D', 'W', 'G'};
constexpr std::size_t kVersionOffset = sizeof(kMagic);
constexpr std::size_t kLengthOffset = kVersionOffset + 4;
constexpr std::size_t kHeaderSize = kLengthOffset + 8;
constexpr std::size_t kCrcSize = 4;

void PutLE(std::vector<std::uint8_t>& out, std::uint64_t value, int size) {
    for (int i = 0; i < size; ++i) out.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

std::uint64_t GetLE(const std::uint8_t* p, int size) {
    std::uint64_t value = 0;
    for (int i = 0; i < size; ++i) value |= static_cast<std::uint64_t>(p[i]) << (8 * i);
    return value;
}

std::uint32_t Crc32(const std::uint8_t* data, std::size_t size) {
    boost::crc_32_type crc;
    crc.process_bytes(data, size);
    return crc.checksum();
}

// Problems found in a file, numbered in the report as an auditor lists them.
class Problems {
public:
    void add(Acad::ErrorStatus status, const CString& text) {
        if (m_items.empty()) m_first = status;
        m_items.push_back(text);
    }
    bool any() const { return !m_items.empty(); }
    Acad::ErrorStatus first() const { return m_first; }
    // verb: what could not be done to the drawing ("读取", "保存").
    CString report(const wchar_t* verb, const wchar_t* path) const {
        CString text = FormatText(L"不能%s图形 %s：", verb, path);
        for (std::size_t i = 0; i < m_items.size(); ++i) {
            text.AppendFormat(L"\n  %d. %s。", static_cast<int>(i + 1), m_items[i].GetString());
        }
        return text;
    }

private:
    std::vector<CString> m_items;
    Acad::ErrorStatus m_first = Acad::eOk;
};

// One object's own record, filed on its own so that a reader can tell where it ends.
bool WriteRecord(MemoryDwgFiler& body, AcDbStub* stub, AcDbDatabase* db, Problems& problems) {
    MemoryDwgFiler record(AcDb::kFileFiler, db);
    {
        DatabaseImpl::ReadScope readable(stub);
        stub->object->dwgOutFields(&record);
    }
    if (record.filerStatus() == Acad::eInvalidInput) {
        problems.add(Acad::eInvalidInput,
                     FormatText(L"对象 %s（%s）含有不是有限值的数", stub->handle.text().GetString(),
                                stub->object->isA()->name()));
        return false;
    }
    if (record.filerStatus() != Acad::eOk) {
        problems.add(record.filerStatus(),
                     FormatText(L"对象 %s（%s）无法写出（%s）", stub->handle.text().GetString(),
                                stub->object->isA()->name(), ErrorText(record.filerStatus())));
        return false;
    }
    body.writeUInt64(record.bytes().size());
    body.writeBytes(record.bytes().data(), record.bytes().size());
    return true;
}

bool ReadRecord(MemoryDwgFiler& body, std::vector<std::uint8_t>& record) {
    Adesk::UInt64 size = 0;
    body.readUInt64(&size);
    if (body.filerStatus() != Acad::eOk) return false;
    // A damaged length must not make us allocate what the file cannot hold.
    if (size > body.bytes().size() - body.tell()) {
        body.setFilerStatus(Acad::eEndOfFile);
        return false;
    }
    record.resize(size);
    body.readBytes(record.data(), size);
    return body.filerStatus() == Acad::eOk;
}

std::vector<AcDbStub*> LiveStubs(const std::vector<AcDbStub*>& stubs) {
    std::vector<AcDbStub*> live;
    for (AcDbStub* stub : stubs) {
        if (!stub->erased && stub->object != nullptr) live.push_back(stub);
    }
    return live;
}

bool WriteAll(const std::string& file, const std::vector<std::uint8_t>& bytes, int& error) {
    const int fd = ::open(file.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    if (fd < 0) {
        error = errno;
        return false;
    }
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) {
            error = errno;
            ::close(fd);
            return false;
        }
        done += static_cast<size_t>(n);
    }
    if (::close(fd) != 0) {
        error = errno;
        return false;
    }
    return true;
}

}  // namespace

Acad::ErrorStatus WriteDrawingFile(const AcDbDatabase& db, const wchar_t* path, CString& report) {
    report.Empty();
    Problems problems;
    if (path == nullptr || *path == L'\0') {
        report = L"图形没有文件名，不能保存。";
        return Acad::eInvalidInput;
    }
    DatabaseImpl& impl = DatabaseImpl::of(&db);
    if (impl.blockTable == nullptr || impl.layerTable == nullptr || impl.modelSpace == nullptr) {
        problems.add(Acad::eMissingSymbolTable, L"图形没有符号表");
        report = problems.report(L"保存", path);
        return problems.first();
    }
    for (const AcDbStub& stub : impl.stubs) {
        if (stub.writer && stub.object != nullptr) {
            problems.add(Acad::eWasOpenedForWrite,
                         FormatText(L"对象 %s 正以写方式打开", stub.handle.text().GetString()));
        }
    }
    if (problems.any()) {
        report = problems.report(L"保存", path);
        return problems.first();
    }

    auto* database = const_cast<AcDbDatabase*>(&db);
    MemoryDwgFiler body(AcDb::kFileFiler, database);
    body.writeUInt64(impl.handseed);
    body.writeAcDbHandle(impl.blockTable->handle);
    body.writeAcDbHandle(impl.layerTable->handle);
    body.writeAcDbHandle(impl.modelSpace->handle);
    body.writeAcDbHandle(impl.clayer->handle);
    const auto layers =
        LiveStubs(ObjectAccess::records(static_cast<AcDbSymbolTable*>(impl.layerTable->object)));
    body.writeUInt32(static_cast<Adesk::UInt32>(layers.size()));
    for (AcDbStub* stub : layers) {
        body.writeAcDbHandle(stub->handle);
        WriteRecord(body, stub, database, problems);
    }
    const auto entities = LiveStubs(
        ObjectAccess::entities(static_cast<AcDbBlockTableRecord*>(impl.modelSpace->object)));
    body.writeUInt32(static_cast<Adesk::UInt32>(entities.size()));
    for (AcDbStub* stub : entities) {
        body.writeString(stub->object->isA()->name());
        body.writeAcDbHandle(stub->handle);
        WriteRecord(body, stub, database, problems);
    }
    if (problems.any()) {
        report = problems.report(L"保存", path);
        return problems.first();
    }

    std::vector<std::uint8_t> bytes(std::begin(kMagic), std::end(kMagic));
    PutLE(bytes, kDrawingFormatVersion, 4);
    PutLE(bytes, body.bytes().size(), 8);
    bytes.insert(bytes.end(), body.bytes().begin(), body.bytes().end());
    PutLE(bytes, Crc32(bytes.data(), bytes.size()), 4);

    int writeError = 0;
    FileStatus status = ReplaceFile(ToUtf8(std::wstring_view(path)), [&](const std::string& file) {
        return WriteAll(file, bytes, writeError);
    });
    if (status.problem == FileProblem::kWriteFailed && status.error == 0) {
        status.error = writeError;
    }
    if (!status.ok()) {
        problems.add(Acad::eFileAccessErr, FromUtf8(FileProblemText(status)));
        report = problems.report(L"保存", path);
        return problems.first();
    }
    return Acad::eOk;
}

namespace {

// Reads the checked body into temp, listing what is wrong.
void ReadBody(const std::vector<std::uint8_t>& bytes, AcDbDatabase& temp, Problems& problems) {
    DatabaseImpl& impl = DatabaseImpl::of(&temp);
    MemoryDwgFiler body(
        std::vector<std::uint8_t>(bytes.begin() + kHeaderSize, bytes.end() - kCrcSize),
        AcDb::kFileFiler, &temp);
    auto structureError = [&](const wchar_t* where) {
        problems.add(Acad::eDwgNotRecoverable,
                     FormatText(L"%s无法读取（%s）", where, ErrorText(body.filerStatus())));
    };

    Adesk::UInt64 handseed = 0;
    AcDbHandle handles[4];
    body.readUInt64(&handseed);
    for (AcDbHandle& h : handles) body.readAcDbHandle(&h);
    if (body.filerStatus() != Acad::eOk) return structureError(L"图形文件头");
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < i; ++j) {
            if (handles[i].isNull() || handles[i] == handles[j]) {
                problems.add(Acad::eDwgNotRecoverable, L"各表的句柄为空或有重复");
                return;
            }
        }
    }
    // The fixed structure first, under its saved handles; layer 0 and the rest follow.
    impl.blockTable = impl.newStub(handles[0]);
    impl.adopt(impl.blockTable, new AcDbBlockTable(), AcDbObjectId());
    impl.layerTable = impl.newStub(handles[1]);
    impl.adopt(impl.layerTable, new AcDbLayerTable(), AcDbObjectId());
    auto* model = new AcDbBlockTableRecord();
    ObjectAccess::setName(model, ACDB_MODEL_SPACE);
    impl.modelSpace = impl.newStub(handles[2]);
    impl.adopt(impl.modelSpace, model, AcDbObjectId(impl.blockTable));
    ObjectAccess::records(static_cast<AcDbSymbolTable*>(impl.blockTable->object))
        .push_back(impl.modelSpace);
    auto* layerTable = static_cast<AcDbSymbolTable*>(impl.layerTable->object);

    // A stub for a handle read now, or the one a reference made earlier.
    auto stubFor = [&](AcDbHandle handle, const wchar_t* what) -> AcDbStub* {
        AcDbStub* stub = impl.findStub(handle);
        if (handle.isNull() || (stub != nullptr && stub->object != nullptr)) {
            problems.add(Acad::eDwgObjectImproperlyRead,
                         FormatText(L"%s %s：句柄已被占用", what, handle.text().GetString()));
            return nullptr;
        }
        return stub != nullptr ? stub : impl.newStub(handle);
    };
    auto readInto = [&](AcDbObject* obj, const std::vector<std::uint8_t>& record,
                        const CString& what) {
        MemoryDwgFiler filer(record, AcDb::kFileFiler, &temp);
        const Acad::ErrorStatus es = obj->dwgInFields(&filer);
        if (es == Acad::eMakeMeProxy) {
            problems.add(es, what + L"：由它的类的较新版本写成");
        } else if (filer.filerStatus() == Acad::eInvalidInput) {
            problems.add(Acad::eDwgObjectImproperlyRead, what + L"：记录中有不是有限值的数");
        } else if (es != Acad::eOk || filer.filerStatus() != Acad::eOk) {
            const Acad::ErrorStatus why = es != Acad::eOk ? es : filer.filerStatus();
            problems.add(Acad::eDwgObjectImproperlyRead,
                         what + FormatText(L"：记录无法读取（%s）", ErrorText(why)));
        } else if (!filer.atEnd()) {
            problems.add(Acad::eDwgObjectImproperlyRead,
                         what + FormatText(L"：记录共 %d 字节，有 %d 字节没有读到",
                                           static_cast<int>(record.size()),
                                           static_cast<int>(record.size() - filer.tell())));
        }
    };

    std::vector<std::uint8_t> record;
    Adesk::UInt32 layerCount = 0;
    body.readUInt32(&layerCount);
    if (body.filerStatus() != Acad::eOk) return structureError(L"图层表");
    for (Adesk::UInt32 i = 0; i < layerCount; ++i) {
        AcDbHandle handle;
        body.readAcDbHandle(&handle);
        if (!ReadRecord(body, record)) return structureError(L"图层表");
        AcDbStub* stub = stubFor(handle, L"图层");
        if (stub == nullptr) continue;
        auto* layer = new AcDbLayerTableRecord();
        impl.adopt(stub, layer, AcDbObjectId(impl.layerTable));
        ObjectAccess::records(layerTable).push_back(stub);
        readInto(layer, record, FormatText(L"图层 %s", handle.text().GetString()));
        const CString& name = ObjectAccess::name(layer);
        if (!name.IsEmpty() && impl.findLayer(name) != stub) {
            problems.add(Acad::eDuplicateRecordName,
                         FormatText(L"图层 %s：名字 %s 已被另一个图层使用",
                                    handle.text().GetString(), name.GetString()));
        }
    }

    Adesk::UInt32 entityCount = 0;
    body.readUInt32(&entityCount);
    if (body.filerStatus() != Acad::eOk) return structureError(L"实体列表");
    auto* block = static_cast<AcDbBlockTableRecord*>(impl.modelSpace->object);
    AcRxDictionary* classes = acrxClassDictionary;
    for (Adesk::UInt32 i = 0; i < entityCount; ++i) {
        CString className;
        AcDbHandle handle;
        body.readString(className);
        body.readAcDbHandle(&handle);
        if (!ReadRecord(body, record)) return structureError(L"实体列表");
        const CString what =
            FormatText(L"实体 %s（%s）", handle.text().GetString(), className.GetString());
        auto* cls = static_cast<AcRxClass*>(classes->at(className));
        if (cls == nullptr || !cls->isKindOf(AcRxClass::desc())) {
            problems.add(Acad::eDwgObjectImproperlyRead, what + L"：未知的类");
            continue;
        }
        if (!cls->isDerivedFrom(AcDbEntity::desc())) {
            problems.add(Acad::eDwgObjectImproperlyRead, what + L"：不是实体类");
            continue;
        }
        AcRxObject* made = cls->create();
        if (made == nullptr) {
            problems.add(Acad::eDwgObjectImproperlyRead, what + L"：它的类无法创建对象");
            continue;
        }
        auto* entity = static_cast<AcDbEntity*>(made);
        AcDbStub* stub = stubFor(handle, L"实体");
        if (stub == nullptr) {
            delete entity;
            continue;
        }
        impl.adopt(stub, entity, AcDbObjectId(impl.modelSpace));
        stub->drawOrder = impl.nextDrawOrder++;
        ObjectAccess::entities(block).push_back(stub);
        readInto(entity, record, what);
        const CString layer = entity->layer();
        if (impl.findLayer(layer) == nullptr) {
            problems.add(Acad::eDwgObjectImproperlyRead,
                         what + FormatText(L"：它的图层 %s 不在图形中", layer.GetString()));
        }
    }
    if (!body.atEnd()) {
        problems.add(Acad::eDwgNotRecoverable,
                     FormatText(L"最后一个实体之后还有 %d 字节",
                                static_cast<int>(body.bytes().size() - body.tell())));
    }

    AcDbStub* clayer = impl.findStub(handles[3]);
    if (clayer == nullptr || clayer->object == nullptr ||
        !clayer->object->isKindOf(AcDbLayerTableRecord::desc())) {
        problems.add(Acad::eDwgObjectImproperlyRead,
                     FormatText(L"当前图层 %s 不是图形中的图层", handles[3].text().GetString()));
    } else {
        impl.clayer = clayer;
    }
    for (AcDbStub& stub : impl.stubs) {
        if (stub.object == nullptr) {
            problems.add(
                Acad::eDwgObjectImproperlyRead,
                FormatText(L"句柄 %s 被引用，但没有对象使用它", stub.handle.text().GetString()));
        }
        if (stub.handle.value() >= handseed) {
            problems.add(Acad::eDwgObjectImproperlyRead,
                         FormatText(L"句柄 %s 不小于句柄种子 %s", stub.handle.text().GetString(),
                                    AcDbHandle(handseed).text().GetString()));
        }
        stub.writer = false;
        stub.isNew = false;
    }
    impl.handseed = handseed;
}

}  // namespace

Acad::ErrorStatus ReadDrawingFile(const wchar_t* path, std::unique_ptr<DatabaseImpl>& contents,
                                  CString& report) {
    contents.reset();
    report.Empty();
    Problems problems;
    if (path == nullptr || *path == L'\0') {
        report = L"没有文件名，不能读取图形。";
        return Acad::eInvalidInput;
    }
    auto fail = [&](Acad::ErrorStatus status, const CString& text) {
        problems.add(status, text);
        report = problems.report(L"读取", path);
        return status;
    };

    std::vector<std::uint8_t> bytes;
    const FileStatus status = ReadRegularFile(ToUtf8(std::wstring_view(path)), bytes, SIZE_MAX);
    if (!status.ok()) {
        return fail(
            status.problem == FileProblem::kMissing ? Acad::eFileNotFound : Acad::eFileAccessErr,
            FromUtf8(FileProblemText(status)));
    }

    if (bytes.size() < sizeof(kMagic) || std::memcmp(bytes.data(), kMagic, sizeof(kMagic)) != 0) {
        return fail(Acad::eBadDwgHeader, L"这不是本程序的图形（文件开头没有图形标识）");
    }
    if (bytes.size() < kHeaderSize + kCrcSize) {
        return fail(Acad::eEndOfFile, FormatText(L"文件不完整：只有 %d 字节，不够一张图形",
                                                 static_cast<int>(bytes.size())));
    }
    const auto version = static_cast<Adesk::UInt32>(GetLE(bytes.data() + kVersionOffset, 4));
    if (version == 0) return fail(Acad::eBadDwgHeader, L"格式版本是 0");
    if (version > kDrawingFormatVersion) {
        return fail(Acad::eInvalidDwgVersion,
                    FormatText(L"由较新的版本以格式 %u 写成；本程序能读取格式 %u 及更早的格式",
                               version, kDrawingFormatVersion));
    }
    const std::uint64_t bodySize = GetLE(bytes.data() + kLengthOffset, 8);
    const std::uint64_t available = bytes.size() - kHeaderSize - kCrcSize;
    if (bodySize > available) {
        return fail(Acad::eEndOfFile, FormatText(L"文件不完整：内容有 %llu 字节，应有 %llu 字节",
                                                 static_cast<unsigned long long>(available),
                                                 static_cast<unsigned long long>(bodySize)));
    }
    if (bodySize < available) {
        return fail(Acad::eDwgNotRecoverable,
                    FormatText(L"图形结束之后还有 %llu 字节",
                               static_cast<unsigned long long>(available - bodySize)));
    }
    const auto stored =
        static_cast<std::uint32_t>(GetLE(bytes.data() + bytes.size() - kCrcSize, 4));
    const std::uint32_t computed = Crc32(bytes.data(), bytes.size() - kCrcSize);
    if (stored != computed) {
        return fail(Acad::eDwgCRCError,
                    FormatText(L"文件已损坏：校验和 %08X 与内容（%08X）不符", stored, computed));
    }

    AcDbDatabase temp(false);
    ReadBody(bytes, temp, problems);
    if (problems.any()) {
        report = problems.report(L"读取", path);
        return problems.first();
    }
    contents = DatabaseImpl::takeContents(temp);
    return Acad::eOk;
}

bool IsDrawingFile(const wchar_t* path) {
    if (path == nullptr || *path == L'\0') return false;
    std::vector<std::uint8_t> head;
    return ReadRegularFile(ToUtf8(std::wstring_view(path)), head, sizeof(kMagic)).ok() &&
           head.size() == sizeof(kMagic) && std::memcmp(head.data(), kMagic, sizeof(kMagic)) == 0;
}

}  // namespace kelaz
