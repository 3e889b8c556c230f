#include "TStrings.h"

#include <QFile>
#include <QTextStream>
#include <algorithm>

namespace {

int compareText(const QString& a, const QString& b) {
    return QString::compare(a, b, Qt::CaseInsensitive);
}

[[noreturn]] void indexError(int index) {
    throw EStringListError(QStringLiteral("List index out of bounds (%1)").arg(index));
}

} // namespace

TStrings::TStrings() = default;

TStrings::~TStrings() = default;

void TStrings::changed() {
    if (OnChange)
        OnChange(this);
}

const QString& TStrings::operator[](int index) const {
    if (index < 0 || index >= Count())
        indexError(index);
    return m_items[index].text;
}

void TStrings::Put(int index, const QString& s) {
    if (index < 0 || index >= Count())
        indexError(index);
    m_items[index].text = s;
    changed();
}

void* TStrings::Objects(int index) const {
    if (index < 0 || index >= Count())
        indexError(index);
    return m_items[index].object;
}

void TStrings::PutObject(int index, void* object) {
    if (index < 0 || index >= Count())
        indexError(index);
    m_items[index].object = object;
    changed();
}

int TStrings::Add(const QString& s) {
    m_items.append({s, nullptr});
    changed();
    return Count() - 1;
}

int TStrings::AddObject(const QString& s, void* object) {
    const int i = Add(s);
    if (i >= 0)
        m_items[i].object = object;
    return i;
}

void TStrings::Insert(int index, const QString& s) {
    if (index < 0 || index > Count())
        indexError(index);
    m_items.insert(index, {s, nullptr});
    changed();
}

void TStrings::Delete(int index) {
    if (index < 0 || index >= Count())
        indexError(index);
    m_items.removeAt(index);
    changed();
}

void TStrings::Clear() {
    if (m_items.isEmpty())
        return;
    m_items.clear();
    changed();
}

void TStrings::Exchange(int a, int b) {
    if (a < 0 || a >= Count())
        indexError(a);
    if (b < 0 || b >= Count())
        indexError(b);
    m_items.swapItemsAt(a, b);
    changed();
}

void TStrings::Move(int from, int to) {
    if (from < 0 || from >= Count())
        indexError(from);
    if (to < 0 || to >= Count())
        indexError(to);
    m_items.move(from, to);
    changed();
}

int TStrings::IndexOf(const QString& s) const {
    for (int i = 0; i < Count(); ++i)
        if (compareText(m_items[i].text, s) == 0)
            return i;
    return -1;
}

int TStrings::IndexOfObject(void* object) const {
    for (int i = 0; i < Count(); ++i)
        if (m_items[i].object == object)
            return i;
    return -1;
}

QString TStrings::Names(int index) const {
    const QString& s = (*this)[index];
    const qsizetype eq = s.indexOf(QLatin1Char('='));
    return eq < 0 ? QString() : s.left(eq);
}

int TStrings::IndexOfName(const QString& name) const {
    for (int i = 0; i < Count(); ++i) {
        const qsizetype eq = m_items[i].text.indexOf(QLatin1Char('='));
        if (eq >= 0 && compareText(m_items[i].text.left(eq), name) == 0)
            return i;
    }
    return -1;
}

QString TStrings::Values(const QString& name) const {
    const int i = IndexOfName(name);
    return i < 0 ? QString() : m_items[i].text.mid(name.size() + 1);
}

void TStrings::SetValue(const QString& name, const QString& value) {
    const int i = IndexOfName(name);
    if (value.isEmpty()) {
        if (i >= 0)
            Delete(i);
    } else if (i < 0) {
        Add(name + QLatin1Char('=') + value);
    } else {
        Put(i, name + QLatin1Char('=') + value);
    }
}

QString TStrings::Text() const {
    QString out;
    for (const Item& it : m_items) {
        out += it.text;
        out += QLatin1String("\r\n");
    }
    return out;
}

void TStrings::SetText(const QString& text) {
    m_items.clear();
    qsizetype start = 0;
    const qsizetype n = text.size();
    while (start < n) {
        qsizetype end = start;
        while (end < n && text[end] != QLatin1Char('\r') && text[end] != QLatin1Char('\n'))
            ++end;
        m_items.append({text.mid(start, end - start), nullptr});
        if (end < n && text[end] == QLatin1Char('\r'))
            ++end;
        if (end < n && text[end] == QLatin1Char('\n'))
            ++end;
        start = end;
    }
    if (auto* sl = dynamic_cast<TStringList*>(this); sl && sl->Sorted())
        sl->Sort();
    changed();
}

QString TStrings::CommaText() const {
    QStringList parts;
    for (const Item& it : m_items) {
        const QString& s = it.text;
        bool quote = s.isEmpty();
        for (QChar c : s)
            if (c.unicode() <= 0x20 || c == QLatin1Char(',') || c == QLatin1Char('"'))
                quote = true;
        if (quote) {
            QString q = s;
            q.replace(QLatin1String("\""), QLatin1String("\"\""));
            parts << QLatin1Char('"') + q + QLatin1Char('"');
        } else {
            parts << s;
        }
    }
    return parts.join(QLatin1Char(','));
}

void TStrings::SetCommaText(const QString& text) {
    m_items.clear();
    qsizetype i = 0;
    const qsizetype n = text.size();
    auto skipBlanks = [&]() {
        while (i < n && text[i].unicode() <= 0x20)
            ++i;
    };
    skipBlanks();
    while (i < n) {
        QString item;
        if (text[i] == QLatin1Char('"')) {
            ++i;
            while (i < n) {
                if (text[i] == QLatin1Char('"')) {
                    if (i + 1 < n && text[i + 1] == QLatin1Char('"')) {
                        item += QLatin1Char('"');
                        i += 2;
                        continue;
                    }
                    ++i;
                    break;
                }
                item += text[i++];
            }
        } else {
            while (i < n && text[i].unicode() > 0x20 && text[i] != QLatin1Char(','))
                item += text[i++];
        }
        m_items.append({item, nullptr});
        skipBlanks();
        if (i < n && text[i] == QLatin1Char(',')) {
            ++i;
            skipBlanks();
        }
    }
    changed();
}

void TStrings::AddStrings(const TStrings& other) {
    for (const Item& it : other.m_items)
        AddObject(it.text, it.object);
}

void TStrings::Assign(TPersistent* source) {
    if (auto* s = dynamic_cast<TStrings*>(source)) {
        const QList<Item> items = s->m_items;
        m_items.clear();
        for (const Item& it : items)
            AddObject(it.text, it.object);
        changed();
        return;
    }
    TPersistent::Assign(source);
}

QStringList TStrings::ToStringList() const {
    QStringList out;
    out.reserve(Count());
    for (const Item& it : m_items)
        out << it.text;
    return out;
}

void TStrings::SetStringList(const QStringList& list) {
    m_items.clear();
    for (const QString& s : list)
        Add(s);
    changed();
}

void TStrings::LoadFromFile(const QString& fileName) {
    QFile f(fileName);
    if (!f.open(QIODevice::ReadOnly))
        throw EInOutError(
            QStringLiteral("Cannot open file \"%1\". %2").arg(fileName, f.errorString()));
    SetText(QString::fromUtf8(f.readAll()));
}

void TStrings::SaveToFile(const QString& fileName) const {
    QFile f(fileName);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw EInOutError(
            QStringLiteral("Cannot create file \"%1\". %2").arg(fileName, f.errorString()));
    f.write(Text().toUtf8());
}

// ---------------------------------------------------------------------------------------------

void TStringList::SetSorted(bool value) {
    if (value == m_sorted)
        return;
    if (value)
        Sort();
    m_sorted = value;
}

void TStringList::Sort() {
    std::stable_sort(m_items.begin(), m_items.end(),
                     [](const Item& a, const Item& b) { return compareText(a.text, b.text) < 0; });
    changed();
}

bool TStringList::Find(const QString& s, int& index) const {
    int lo = 0, hi = Count() - 1;
    bool found = false;
    while (lo <= hi) {
        const int mid = (lo + hi) / 2;
        const int c = compareText(m_items[mid].text, s);
        if (c < 0) {
            lo = mid + 1;
        } else {
            hi = mid - 1;
            if (c == 0) {
                found = true;
                if (m_duplicates != dupAccept)
                    lo = mid;
            }
        }
    }
    index = lo;
    return found;
}

int TStringList::Add(const QString& s) {
    if (!m_sorted)
        return TStrings::Add(s);
    int index = 0;
    if (Find(s, index)) {
        if (m_duplicates == dupIgnore)
            return index;
        if (m_duplicates == dupError)
            throw EStringListError(QStringLiteral("String list does not allow duplicates"));
    }
    m_items.insert(index, {s, nullptr});
    changed();
    return index;
}

void TStringList::Insert(int index, const QString& s) {
    if (m_sorted)
        throw EStringListError(QStringLiteral("Operation not allowed on sorted string list"));
    TStrings::Insert(index, s);
}

int TStringList::IndexOf(const QString& s) const {
    if (!m_sorted)
        return TStrings::IndexOf(s);
    int index = 0;
    return Find(s, index) ? index : -1;
}
