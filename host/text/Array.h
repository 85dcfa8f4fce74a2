#pragma once

// The host's array containers: the framework's CArray family (CStringArray, CUIntArray) with
// INT_PTR sizes, and the drafting API's AcArray with int indices. Both keep their elements in
// order and copy by value. An index outside the array is a programming error: the framework's
// classes throw its invalid-argument exception, AcArray stops with an assertion.

#include <algorithm>
#include <utility>
#include <vector>

#include "host/Assert.h"
#include "host/text/CString.h"

template <class TYPE>
class CArray {
public:
    CArray() = default;

    INT_PTR GetSize() const { return static_cast<INT_PTR>(m_data.size()); }
    INT_PTR GetCount() const { return GetSize(); }
    INT_PTR GetUpperBound() const { return GetSize() - 1; }
    bool IsEmpty() const { return m_data.empty(); }
    void SetSize(INT_PTR size) { m_data.resize(static_cast<size_t>(std::max<INT_PTR>(size, 0))); }
    void RemoveAll() { m_data.clear(); }

    const TYPE& GetAt(INT_PTR i) const { return m_data[Check(i)]; }
    TYPE& ElementAt(INT_PTR i) { return m_data[Check(i)]; }
    void SetAt(INT_PTR i, const TYPE& v) { m_data[Check(i)] = v; }
    const TYPE& operator[](INT_PTR i) const { return GetAt(i); }
    TYPE& operator[](INT_PTR i) { return ElementAt(i); }
    const TYPE* GetData() const { return m_data.data(); }
    TYPE* GetData() { return m_data.data(); }

    INT_PTR Add(const TYPE& v) {
        m_data.push_back(v);
        return GetUpperBound();
    }
    INT_PTR Append(const CArray& other) {
        const INT_PTR old = GetSize();
        m_data.insert(m_data.end(), other.m_data.begin(), other.m_data.end());
        return old;
    }
    void Copy(const CArray& other) { m_data = other.m_data; }
    void SetAtGrow(INT_PTR i, const TYPE& v) {
        if (i < 0) throw CInvalidArgException("array index out of range");
        if (i >= GetSize()) SetSize(i + 1);
        m_data[static_cast<size_t>(i)] = v;
    }
    void InsertAt(INT_PTR i, const TYPE& v, INT_PTR count = 1) {
        if (i < 0 || count < 0) throw CInvalidArgException("array index out of range");
        if (i > GetSize()) SetSize(i);
        m_data.insert(m_data.begin() + i, static_cast<size_t>(count), v);
    }
    void RemoveAt(INT_PTR i, INT_PTR count = 1) {
        if (i < 0 || count < 0 || i + count > GetSize())
            throw CInvalidArgException("array index out of range");
        m_data.erase(m_data.begin() + i, m_data.begin() + i + count);
    }

    // Range-for over the elements (not in the framework, harmless and handy).
    auto begin() const { return m_data.begin(); }
    auto end() const { return m_data.end(); }
    friend bool operator==(const CArray& a, const CArray& b) { return a.m_data == b.m_data; }

private:
    size_t Check(INT_PTR i) const {
        if (i < 0 || i >= GetSize()) throw CInvalidArgException("array index out of range");
        return static_cast<size_t>(i);
    }
    std::vector<TYPE> m_data;
};

class CStringArray : public CArray<CString> {};
class CUIntArray : public CArray<UINT> {};

template <class T>
class AcArray {
public:
    AcArray() = default;
    explicit AcArray(int physicalLength) {
        m_data.reserve(static_cast<size_t>(std::max(physicalLength, 0)));
    }
    AcArray(std::initializer_list<T> items) : m_data(items) {}

    int length() const { return static_cast<int>(m_data.size()); }
    int logicalLength() const { return length(); }
    int physicalLength() const { return static_cast<int>(m_data.capacity()); }
    bool isEmpty() const { return m_data.empty(); }
    AcArray& setLogicalLength(int n) {
        m_data.resize(static_cast<size_t>(std::max(n, 0)));
        return *this;
    }
    AcArray& setPhysicalLength(int n) {
        if (n < length()) m_data.resize(static_cast<size_t>(std::max(n, 0)));
        m_data.reserve(static_cast<size_t>(std::max(n, 0)));
        return *this;
    }
    AcArray& removeAll() {
        m_data.clear();
        return *this;
    }

    T& at(int i) { return m_data[Check(i)]; }
    const T& at(int i) const { return m_data[Check(i)]; }
    T& operator[](int i) { return at(i); }
    const T& operator[](int i) const { return at(i); }
    AcArray& setAt(int i, const T& v) {
        m_data[Check(i)] = v;
        return *this;
    }
    T& first() { return at(0); }
    const T& first() const { return at(0); }
    T& last() { return at(length() - 1); }
    const T& last() const { return at(length() - 1); }
    const T* asArrayPtr() const { return m_data.data(); }
    T* asArrayPtr() { return m_data.data(); }

    // Appends one element and answers its index.
    int append(const T& v) {
        m_data.push_back(v);
        return length() - 1;
    }
    AcArray& append(const AcArray& other) {
        m_data.insert(m_data.end(), other.m_data.begin(), other.m_data.end());
        return *this;
    }
    AcArray& insertAt(int i, const T& v) {
        KELAZ_ASSERT(i >= 0 && i <= length(), "AcArray insert position out of range");
        m_data.insert(m_data.begin() + i, v);
        return *this;
    }
    AcArray& removeAt(int i) {
        m_data.erase(m_data.begin() + static_cast<std::ptrdiff_t>(Check(i)));
        return *this;
    }
    AcArray& removeFirst() { return removeAt(0); }
    AcArray& removeLast() { return removeAt(length() - 1); }
    AcArray& removeSubArray(int start, int end) {
        KELAZ_ASSERT(start >= 0 && start <= end && end < length(), "AcArray range out of range");
        m_data.erase(m_data.begin() + start, m_data.begin() + end + 1);
        return *this;
    }
    // Removes the first element equal to v at or after start; false when there is none.
    bool remove(const T& v, int start = 0) {
        int at = -1;
        if (!find(v, at, start)) return false;
        removeAt(at);
        return true;
    }

    bool contains(const T& v, int start = 0) const {
        int at = -1;
        return find(v, at, start);
    }
    bool find(const T& v, int& foundAt, int start = 0) const {
        for (int i = std::max(start, 0); i < length(); ++i) {
            if (m_data[static_cast<size_t>(i)] == v) {
                foundAt = i;
                return true;
            }
        }
        return false;
    }
    int find(const T& v) const {
        int at = -1;
        return find(v, at, 0) ? at : -1;
    }

    AcArray& reverse() {
        std::reverse(m_data.begin(), m_data.end());
        return *this;
    }
    AcArray& swap(int i, int j) {
        std::swap(m_data[Check(i)], m_data[Check(j)]);
        return *this;
    }

    auto begin() { return m_data.begin(); }
    auto end() { return m_data.end(); }
    auto begin() const { return m_data.begin(); }
    auto end() const { return m_data.end(); }
    friend bool operator==(const AcArray& a, const AcArray& b) { return a.m_data == b.m_data; }

private:
    size_t Check(int i) const {
        KELAZ_ASSERT(i >= 0 && i < length(), "AcArray index out of range");
        return static_cast<size_t>(i);
    }
    std::vector<T> m_data;
};
