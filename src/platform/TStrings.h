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
    // Carries message.
    using Exception::Exception;
};

// A list of strings, each with an attached object pointer. IndexOf compares case-blind, Text
// joins with "\r\n", CommaText quotes items holding blanks, commas or quotes.
//
// Example, a list written as a text file, one item a line:
//
//     TStringList names;
//     names.Add(QStringLiteral("Anna"));
//     names.Add(QStringLiteral("Bert"));
//     names.SaveToFile(QStringLiteral("namen.txt"));
class QXT_EXPORT TStrings : public TPersistent {
public:
    // An empty list.
    TStrings();
    ~TStrings() override;
    QString ClassName() const override { return QStringLiteral("TStrings"); }

    // The number of items.
    int Count() const { return int(m_items.size()); }
    // Item index; raises EStringListError outside 0 to Count() - 1.
    const QString& operator[](int index) const;
    // Item index, as operator[].
    QString Strings(int index) const { return (*this)[index]; }
    // Replaces item index, keeping its object.
    virtual void Put(int index, const QString& s);
    // The object of item index (not owned).
    void* Objects(int index) const;
    // Attaches object to item index.
    void PutObject(int index, void* object);
    // Appends (or, when sorted, inserts in order); returns the index.
    virtual int Add(const QString& s);
    // Adds s with object; returns the index.
    int AddObject(const QString& s, void* object);
    // Inserts s before item index (Count() appends).
    virtual void Insert(int index, const QString& s);
    // Removes item index.
    void Delete(int index);
    // Removes every item.
    void Clear();
    // Swaps two items with their objects.
    void Exchange(int a, int b);
    // Moves an item with its object to another place.
    void Move(int from, int to);
    // The first index of s, compared case-blind; -1 when absent.
    virtual int IndexOf(const QString& s) const;
    // The first index of object; -1 when absent.
    int IndexOfObject(void* object) const;
    // The first index of an item "name=…", name compared case-blind.
    int IndexOfName(const QString& name) const;
    // The name part of item index ("name=value"), or "" without "=".
    QString Names(int index) const;
    // The value of the first item "name=…", or "".
    QString Values(const QString& name) const;
    // Sets the value of "name=…", adding the item; an empty value removes it.
    void SetValue(const QString& name, const QString& value);
    // Every item followed by "\r
    // "; setting splits at line breaks.
    QString Text() const;
    void SetText(const QString& text);
    // The items joined by commas, quoted where needed; setting splits such text.
    QString CommaText() const;
    void SetCommaText(const QString& text);
    // Appends every item of other with its object.
    void AddStrings(const TStrings& other);
    // Copies another TStrings (items and objects).
    void Assign(TPersistent* source) override;
    // The items as a QStringList; setting replaces every item.
    QStringList ToStringList() const;
    // Replaces every item by the strings of list.
    void SetStringList(const QStringList& list);
    // Loads and saves lines in UTF-8.
    void LoadFromFile(const QString& fileName);
    // Writes Text to the file.
    void SaveToFile(const QString& fileName) const;
    // Called after every change.
    std::function<void(TStrings*)> OnChange;

protected:
    // Calls OnChange.
    void changed();
    // One item: its text and attached object.
    struct Item {
        // The text.
        QString text;
        // The attached object (not owned), or null.
        void* object = nullptr;
    };
    // The items in order.
    QList<Item> m_items;
};

// What a sorted list does with an item it already holds: drop it, keep it or raise.
enum TDuplicates { dupIgnore, dupAccept, dupError };

// A TStrings that can keep itself sorted (case-blind, as the framework compares).
//
// Example, names kept in order, each once:
//
//     TStringList names;
//     names.SetSorted(true);
//     names.Add(QStringLiteral("bert"));
//     names.Add(QStringLiteral("Anna"));
//     names.Add(QStringLiteral("Bert")); // dropped: "bert" is there (dupIgnore)
class QXT_EXPORT TStringList : public TStrings {
public:
    QString ClassName() const override { return QStringLiteral("TStringList"); }
    // Keeps the items sorted; switching it on sorts them.
    bool Sorted() const { return m_sorted; }
    void SetSorted(bool value);
    // What Add does with an item a sorted list already holds.
    TDuplicates Duplicates() const { return m_duplicates; }
    void SetDuplicates(TDuplicates value) { m_duplicates = value; }
    // Appends, or inserts in order when sorted (Duplicates decides on a repeat).
    int Add(const QString& s) override;
    // Inserts at index; raises EStringListError on a sorted list.
    void Insert(int index, const QString& s) override;
    // Sorts the items case-blind.
    void Sort();
    // Binary search of a sorted list: true and the index when found, else the insert position.
    bool Find(const QString& s, int& index) const;
    // Find on a sorted list, the base's search otherwise.
    int IndexOf(const QString& s) const override;

private:
    bool m_sorted = false;
    TDuplicates m_duplicates = dupIgnore;
};
