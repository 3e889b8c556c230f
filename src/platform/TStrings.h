#pragma once

#include "QXExport.h"
#include "SysUtils.h"
#include "TPersistent.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

// Raised for an index outside the list and for a refused duplicate.
class QXT_EXPORT EStringListError : public Exception {
public:
    using Exception::Exception;
};

// A list of strings, each with an attached object pointer. IndexOf compares case-blind, Text
// joins with "\r\n", CommaText quotes items holding blanks, commas or quotes.
class QXT_EXPORT TStrings : public TPersistent {
public:
    TStrings();
    ~TStrings() override;
    QString ClassName() const override { return QStringLiteral("TStrings"); }

    int Count() const { return int(m_items.size()); }
    const QString& operator[](int index) const;
    QString Strings(int index) const { return (*this)[index]; }
    virtual void Put(int index, const QString& s);
    void* Objects(int index) const;
    void PutObject(int index, void* object);
    // Appends (or, when sorted, inserts in order); returns the index.
    virtual int Add(const QString& s);
    int AddObject(const QString& s, void* object);
    virtual void Insert(int index, const QString& s);
    void Delete(int index);
    void Clear();
    void Exchange(int a, int b);
    void Move(int from, int to);
    // The first index of s, compared case-blind; -1 when absent.
    virtual int IndexOf(const QString& s) const;
    int IndexOfObject(void* object) const;
    // The first index of an item "name=…", name compared case-blind.
    int IndexOfName(const QString& name) const;
    QString Names(int index) const;
    QString Values(const QString& name) const;
    void SetValue(const QString& name, const QString& value);
    QString Text() const;
    void SetText(const QString& text);
    QString CommaText() const;
    void SetCommaText(const QString& text);
    void AddStrings(const TStrings& other);
    void Assign(TPersistent* source) override;
    QStringList ToStringList() const;
    void SetStringList(const QStringList& list);
    // Loads and saves lines in UTF-8.
    void LoadFromFile(const QString& fileName);
    void SaveToFile(const QString& fileName) const;
    // Called after every change.
    std::function<void(TStrings*)> OnChange;

protected:
    void changed();
    struct Item {
        QString text;
        void* object = nullptr;
    };
    QList<Item> m_items;
};

enum TDuplicates { dupIgnore, dupAccept, dupError };

// A TStrings that can keep itself sorted (case-blind, as the framework compares).
class QXT_EXPORT TStringList : public TStrings {
public:
    QString ClassName() const override { return QStringLiteral("TStringList"); }
    bool Sorted() const { return m_sorted; }
    void SetSorted(bool value);
    TDuplicates Duplicates() const { return m_duplicates; }
    void SetDuplicates(TDuplicates value) { m_duplicates = value; }
    int Add(const QString& s) override;
    void Insert(int index, const QString& s) override;
    void Sort();
    // Binary search of a sorted list: true and the index when found, else the insert position.
    bool Find(const QString& s, int& index) const;
    int IndexOf(const QString& s) const override;

private:
    bool m_sorted = false;
    TDuplicates m_duplicates = dupIgnore;
};
