#pragma once

// The root of the runtime class system. Every class that takes part (database objects, entities,
// the class descriptors themselves) answers its class descriptor through isA(), so that code can
// ask "is this a kind of AcDbCurve?" without C++ RTTI and so that a drawing file can name the
// class of each object it holds.

class AcRxClass;

class AcRxObject {
public:
    virtual ~AcRxObject() = default;

    static AcRxClass* desc();
    static AcRxObject* cast(const AcRxObject* inPtr) { return const_cast<AcRxObject*>(inPtr); }
    virtual AcRxClass* isA() const;
    // True when this object's class is aClass or derives from it.
    bool isKindOf(const AcRxClass* aClass) const;
    // A new object of the same class holding the same data, owned by the caller; null for a
    // class that does not know how to copy itself (this base).
    virtual AcRxObject* clone() const;

protected:
    AcRxObject() = default;
    AcRxObject(const AcRxObject&) = default;
    AcRxObject& operator=(const AcRxObject&) = default;
};

// Declares a class's runtime members: its descriptor, isA(), a checked cast that answers null
// for an object of another class, and rxInit() which registers the class. Pair it with one of
// the define macros of host/app/RxClass.h in the class's source file. The class name is a type
// there, which cannot be put in parentheses.
// NOLINTBEGIN(bugprone-macro-parentheses)
#define ACRX_DECLARE_MEMBERS(CLASS_NAME)                                       \
    AcRxClass* isA() const override;                                           \
    static AcRxClass* gpDesc;                                                  \
    static AcRxClass* desc();                                                  \
    static CLASS_NAME* cast(const AcRxObject* inPtr) {                         \
        return (inPtr == nullptr || !inPtr->isKindOf(CLASS_NAME::desc()))      \
                   ? nullptr                                                   \
                   : static_cast<CLASS_NAME*>(const_cast<AcRxObject*>(inPtr)); \
    }                                                                          \
    static void rxInit()
// NOLINTEND(bugprone-macro-parentheses)
