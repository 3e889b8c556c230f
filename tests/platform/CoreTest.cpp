#include "Dialogs.h"
#include "SysUtils.h"
#include "TComponent.h"
#include "TStrings.h"
#include "TTimer.h"
#include "TestSupport.h"

#include <QCoreApplication>
#include <QDateTime>
#include <gtest/gtest.h>

TEST(Rects, IntersectionAndEmptiness) {
    TRect r;
    EXPECT_TRUE(IntersectRect(r, Rect(0, 0, 10, 10), Rect(5, 5, 20, 20)));
    EXPECT_EQ(r, Rect(5, 5, 10, 10));
    // Touching edges do not overlap: right and bottom are exclusive.
    EXPECT_FALSE(IntersectRect(r, Rect(0, 0, 5, 5), Rect(5, 0, 9, 5)));
    EXPECT_EQ(r, TRect{});
    EXPECT_EQ(Rect(1, 2, 4, 8).ToQRect(), QRect(1, 2, 3, 6));
    EXPECT_EQ(TRect::FromQRect(QRect(1, 2, 3, 6)), Rect(1, 2, 4, 8));
    EXPECT_FALSE(Rect(0, 0, 2, 2).Contains(Point(2, 1)));
}

TEST(Conversions, IntegersInDecimalAndHex) {
    EXPECT_EQ(StrToInt(QStringLiteral(" 42 ")), 42);
    EXPECT_EQ(StrToInt(QStringLiteral("$1F")), 31);
    EXPECT_EQ(StrToInt(QStringLiteral("0x1f")), 31);
    EXPECT_EQ(StrToInt(QStringLiteral("-7")), -7);
    EXPECT_EQ(StrToIntDef(QStringLiteral("12a"), -1), -1);
    try {
        StrToInt(QStringLiteral("abc"));
        FAIL() << "no exception";
    } catch (const EConvertError& e) {
        EXPECT_EQ(e.Message(), QStringLiteral("'abc' is not a valid integer value"));
    }
    EXPECT_EQ(Trim(QStringLiteral("\t a b \r\n")), QStringLiteral("a b"));
}

TEST(Conversions, DatesAndTimesInGermanFormWithLeadingZeros) {
    const QDate date(2024, 1, 7);
    EXPECT_EQ(DateToStr(date), QStringLiteral("07.01.2024"));
    EXPECT_EQ(TimeToStr(QTime(9, 5, 3)), QStringLiteral("09:05:03"));
    EXPECT_EQ(TimeToStr(QTime(0, 0)), QStringLiteral("00:00:00"));
    EXPECT_EQ(DateTimeToStr(QDateTime(date, QTime(23, 59, 1))),
              QStringLiteral("07.01.2024 23:59:01"));
    // Midnight is a plain date.
    EXPECT_EQ(DateTimeToStr(QDateTime(date, QTime(0, 0))), QStringLiteral("07.01.2024"));
}

TEST(Timer, TicksOnlyWhenEnabledWithAPositiveInterval) {
    TTimer t;
    t.SetInterval(0);
    EXPECT_FALSE(t.IsActive());
    t.SetInterval(25);
    EXPECT_TRUE(t.IsActive());
    t.SetEnabled(false);
    EXPECT_FALSE(t.IsActive());
    t.SetEnabled(true);
    EXPECT_TRUE(t.IsActive());
    t.SetInterval(-5);
    EXPECT_FALSE(t.IsActive());
}

TEST(StringList, IndexOfIsCaseBlindAndSortedListsStaySorted) {
    TStringList l;
    l.Add(QStringLiteral("Beta"));
    l.Add(QStringLiteral("alpha"));
    EXPECT_EQ(l.IndexOf(QStringLiteral("ALPHA")), 1);
    EXPECT_EQ(l.IndexOf(QStringLiteral("gamma")), -1);
    l.SetSorted(true);
    EXPECT_EQ(l[0], QStringLiteral("alpha"));
    l.Add(QStringLiteral("Alpha")); // duplicates ignored by default
    l.Add(QStringLiteral("charlie"));
    EXPECT_EQ(l.ToStringList(), QStringList({"alpha", "Beta", "charlie"}));
    EXPECT_EQ(l.IndexOf(QStringLiteral("BETA")), 1);
    EXPECT_THROW(l.Insert(0, QStringLiteral("x")), EStringListError);
    try {
        (void)l[5];
        FAIL() << "no exception";
    } catch (const EStringListError& e) {
        EXPECT_EQ(e.Message(), QStringLiteral("List index out of bounds (5)"));
    }
}

TEST(StringList, TextCommaTextAndValues) {
    TStringList l;
    l.SetText(QStringLiteral("a=1\r\nB=two words\nlast"));
    EXPECT_EQ(l.Count(), 3);
    EXPECT_EQ(l.Text(), QStringLiteral("a=1\r\nB=two words\r\nlast\r\n"));
    EXPECT_EQ(l.Values(QStringLiteral("b")), QStringLiteral("two words"));
    EXPECT_EQ(l.Names(0), QStringLiteral("a"));
    l.SetValue(QStringLiteral("A"), QString());
    EXPECT_EQ(l.Count(), 2);
    EXPECT_EQ(l.CommaText(), QStringLiteral("\"B=two words\",last"));
    TStringList m;
    m.SetCommaText(QStringLiteral("x, \"y \"\"q\"\"\",, z"));
    EXPECT_EQ(m.ToStringList(), QStringList({"x", "y \"q\"", "", "z"}));
    int changes = 0;
    m.OnChange = [&](TStrings*) { ++changes; };
    m.Delete(0);
    EXPECT_EQ(changes, 1);
}

namespace {

class TWatcher : public TComponent {
public:
    using TComponent::TComponent;
    int loaded = 0;
    QList<QObject*> removed;
    using TComponentBase::FreeNotification;

protected:
    void Loaded() override { ++loaded; }
    void Notification(QObject* c, TOperation op) override {
        if (op == opRemove)
            removed << c;
    }
};

class TPolishedControl : public TGraphicControl {
public:
    using TGraphicControl::TGraphicControl;
    int loaded = 0;

protected:
    void Loaded() override { ++loaded; }
};

} // namespace

TEST(Components, LoadingEndsOnceAndRemovalIsNotified) {
    TWatcher w;
    EXPECT_TRUE(w.ComponentState().Contains(csLoading));
    QCoreApplication::processEvents();
    EXPECT_FALSE(w.ComponentState().Contains(csLoading));
    w.EndLoading();
    EXPECT_EQ(w.loaded, 1);

    auto* other = new TComponent;
    w.FreeNotification(other);
    delete other;
    ASSERT_EQ(w.removed.size(), 1);
    EXPECT_EQ(w.removed[0], other);

    TPolishedControl c;
    EXPECT_TRUE(c.ComponentState().Contains(csLoading));
    c.ensurePolished();
    EXPECT_FALSE(c.ComponentState().Contains(csLoading));
    c.show();
    EXPECT_EQ(c.loaded, 1);
    c.SetDesigning(true);
    EXPECT_TRUE(c.ComponentState().Contains(csDesigning));
}

TEST(Dialogs, TheReplacedServiceSeesTextsAndAnswers) {
    qxtest::DialogRecorder rec;
    rec.answers = {mrNo};
    ShowMessage(QStringLiteral("Hallo"));
    EXPECT_EQ(MessageDlg(QStringLiteral("Weiter?"), mtConfirmation, {mbYes, mbNo}), mrNo);
    EXPECT_EQ(rec.texts(), QStringList({"Hallo", "Weiter?"}));
    EXPECT_EQ(rec.requests[1].Type, mtConfirmation);
    QString dir = QStringLiteral("/tmp");
    rec.answers = {mrCancel};
    EXPECT_FALSE(SelectDirectory(QStringLiteral("Wählen"), dir));
    EXPECT_EQ(dir, QStringLiteral("/tmp"));
}

namespace {

// Paints a red square through the canvas and remembers what the canvas offered.
template <typename Base> class TSquare : public Base {
public:
    explicit TSquare(QWidget* parent = nullptr) : Base(parent) { this->resize(20, 10); }
    TRect clip;
    TColor fontColor = clNone;

protected:
    void Paint() override {
        TCanvas* c = this->Canvas();
        clip = c->ClipRect();
        fontColor = c->Font.Color();
        c->Brush.Color = clRed;
        c->FillRect(Rect(2, 2, 6, 6));
    }
};

} // namespace

TEST(Components, PaintDrawsThroughAValidCanvas) {
    QWidget parent;
    parent.resize(60, 20);
    QPalette white;
    white.setColor(QPalette::Window, Qt::white);
    parent.setPalette(white);
    auto* windowed = new TSquare<TCustomControl>(&parent);
    auto* graphic = new TSquare<TGraphicControl>(&parent);
    graphic->move(30, 0);
    for (TControl* c : {static_cast<TControl*>(windowed), static_cast<TControl*>(graphic)}) {
        c->SetColor(clBlue);
        c->Font()->SetColor(clGreen);
    }
    const QImage shot = parent.grab().toImage();
    EXPECT_EQ(windowed->clip, Rect(0, 0, 20, 10));
    EXPECT_EQ(windowed->fontColor, clGreen);
    EXPECT_EQ(qxtest::pixelBGR(shot, 2, 2), clRed);
    EXPECT_EQ(qxtest::pixelBGR(shot, 5, 5), clRed);
    EXPECT_EQ(qxtest::pixelBGR(shot, 32, 2), clRed);
    // Around the square a windowed control shows its own colour, a graphic control its parent's.
    EXPECT_EQ(qxtest::pixelBGR(shot, 6, 6), clBlue);
    EXPECT_EQ(qxtest::pixelBGR(shot, 19, 9), clBlue);
    EXPECT_EQ(qxtest::pixelBGR(shot, 36, 6), clWhite);
}
