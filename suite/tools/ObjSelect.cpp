#include "suite/tools/ObjSelect.h"

#include "host/db/BlockTable.h"
#include "host/db/Database.h"
#include "host/db/HostApplicationServices.h"
#include "suite/entities/KelAzEntity.h"
#include "suite/tools/KELToolKit.h"

bool CObjSelect::SelectObjs(AcArray<AcDbObjectId>& ids, CString className, CString path,
                            bool subPaths, bool skipErased) {
    ids.removeAll();
    AcDbDatabase* db = m_db ? m_db : acdbHostApplicationServices()->workingDatabase();
    AcRxClass* cls = className.IsEmpty() ? KelAzEntity::desc() : kelaz::FindClass(className);
    if (!db || !cls || path.IsEmpty()) return false;
    AcDbBlockTable* table = nullptr;
    if (db->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return false;
    AcDbBlockTableRecord* model = nullptr;
    const Acad::ErrorStatus es = table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForRead);
    table->close();
    if (es != Acad::eOk) return false;
    AcDbBlockTableRecordIterator* it = nullptr;
    if (model->newIterator(it, true, skipErased) == Acad::eOk) {
        for (; !it->done(); it->step(true, skipErased)) {
            AcDbEntity* entity = nullptr;
            if (it->getEntity(entity, AcDb::kForRead, !skipErased) != Acad::eOk) continue;
            const KelAzEntity* suite = KelAzEntity::cast(entity);
            if (suite && entity->isKindOf(cls)) {
                const CString att = suite->GetAttName();
                if (att == path || (subPaths && att.Left(path.GetLength() + 1) == path + L"\\")) {
                    AcDbObjectId id;
                    it->getEntityId(id);
                    ids.append(id);
                }
            }
            entity->close();
        }
        delete it;
    }
    model->close();
    return !ids.isEmpty();
}
