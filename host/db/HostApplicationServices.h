#pragma once

// The host's application services: which database commands work on.

class AcDbDatabase;

class AcDbHostApplicationServices {
public:
    virtual ~AcDbHostApplicationServices() = default;

    // Null until one is set; a database that is destroyed stops being the working one.
    AcDbDatabase* workingDatabase() const { return m_working; }
    void setWorkingDatabase(AcDbDatabase* pDatabase) { m_working = pDatabase; }

private:
    AcDbDatabase* m_working = nullptr;
};

AcDbHostApplicationServices* acdbHostApplicationServices();
