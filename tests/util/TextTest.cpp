#include "QxutilText.h"
#include "TGraphic.h"
#include "TestSupport.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

TEST(Replace, RescansFromTheStartAfterEveryChange) {
    QString s = QStringLiteral("aab");
    qxtReplaceString(s, QStringLiteral("ab"), QStringLiteral("b"));
    EXPECT_EQ(s, QStringLiteral("b")); // a single left-to-right pass would leave "ab"
    QString about = QStringLiteral("Stand : 15.11.96^M(Beta)");
    qxtReplaceString(about, QStringLiteral("^M"), QStringLiteral("\n\r"));
    EXPECT_EQ(about, QStringLiteral("Stand : 15.11.96\n\r(Beta)"));
    QString c = QStringLiteral("a.b.c");
    qxtReplaceChar(c, QLatin1Char('.'), QLatin1Char('/'));
    EXPECT_EQ(c, QStringLiteral("a/b/c"));
}

TEST(Replace, NonTerminatingArgumentsReturnAtOnce) {
    QString s = QStringLiteral("xax");
    qxtReplaceString(s, QStringLiteral("a"), QStringLiteral("aa"));
    EXPECT_EQ(s, QStringLiteral("xax"));
    qxtReplaceString(s, QString(), QStringLiteral("y"));
    EXPECT_EQ(s, QStringLiteral("xax"));
    qxtReplaceChar(s, QLatin1Char('x'), QLatin1Char('x'));
    EXPECT_EQ(s, QStringLiteral("xax"));
}

TEST(Split, FieldsCountFromOneAndEmptyFieldsCount) {
    const QString abc = QStringLiteral("a;b;c");
    EXPECT_EQ(qxtSplitPar(abc, QLatin1Char(';'), 1), QStringLiteral("a"));
    EXPECT_EQ(qxtSplitPar(abc, QLatin1Char(';'), 2), QStringLiteral("b"));
    EXPECT_EQ(qxtSplitPar(abc, QLatin1Char(';'), 3), QStringLiteral("c"));
    EXPECT_EQ(qxtSplitPar(abc, QLatin1Char(';'), 4), QString());
    EXPECT_EQ(qxtSplitPar(abc, QLatin1Char(';'), 0), QString());
    EXPECT_EQ(qxtSplitPar(QStringLiteral("a;;c"), QLatin1Char(';'), 2), QString());
    EXPECT_EQ(qxtSplitPar(QStringLiteral("a;;c"), QLatin1Char(';'), 3), QStringLiteral("c"));
    EXPECT_EQ(qxtSplitPar(QStringLiteral("a<>bb<>c"), QStringLiteral("<>"), 2),
              QStringLiteral("bb"));
    EXPECT_EQ(qxtSplitPar(QStringLiteral("a<>bb<>c"), QStringLiteral("<>"), 3),
              QStringLiteral("c"));
    EXPECT_EQ(qxtSplitPar(QStringLiteral("a<>b"), QString(), 1), QString());
}

TEST(Split, LastVariantNeverReturnsTheTail) {
    const QString abc = QStringLiteral("a;b;c");
    EXPECT_EQ(qxtSplitParLast(abc, QLatin1Char(';'), 1, 0), QStringLiteral("a"));
    EXPECT_EQ(qxtSplitParLast(abc, QLatin1Char(';'), 2, 0), QStringLiteral("b"));
    EXPECT_EQ(qxtSplitParLast(abc, QLatin1Char(';'), 3, 0), QString());
    EXPECT_EQ(qxtSplitParLast(abc, QLatin1Char(';'), 1, 1), QStringLiteral("a;b"));
    EXPECT_EQ(qxtSplitParLast(abc, QLatin1Char(';'), 2, 1), QString());
}

TEST(Comments, PositionWrapsInEightBits) {
    EXPECT_EQ(qxtDelComment(QStringLiteral("key=1 ;note")), QStringLiteral("key=1"));
    EXPECT_EQ(qxtDelComment(QStringLiteral("  key=1  ")), QStringLiteral("  key=1  "));
    const QString at256 = QString(255, QLatin1Char('x')) + QStringLiteral(";c");
    EXPECT_EQ(qxtDelComment(at256), at256);
    const QString at300 = QString(299, QLatin1Char('y')) + QStringLiteral(";c");
    EXPECT_EQ(qxtDelComment(at300), QString(43, QLatin1Char('y')));
}

TEST(Counting, JustifyCountAndClamp) {
    EXPECT_EQ(qxtJustString(QStringLiteral("  ab "), 4), QStringLiteral("ab  "));
    EXPECT_EQ(qxtJustString(QStringLiteral("abcdef"), 3), QStringLiteral("abc"));
    EXPECT_EQ(qxtJustString(QStringLiteral("abc"), -2), QString());
    EXPECT_EQ(qxtInCount(QString(300, QLatin1Char('c')), QLatin1Char('c')), 44);
    EXPECT_EQ(qxtInCount(QString(256, QLatin1Char('c')), QLatin1Char('c')), 0);
    int v = 5;
    qxtMinMaxInteger(v, 10, 1);
    EXPECT_EQ(v, 10);
    v = 50;
    qxtMinMaxInteger(v, 10, 20);
    EXPECT_EQ(v, 20);
    long double e = -3.5L;
    qxtMinMaxExtended(e, -1.0L, 1.0L);
    EXPECT_EQ(e, -1.0L);
}

namespace {

struct Painted {
    QImage image{100, 100, QImage::Format_RGB32};
    TCanvas canvas{&image};
    Painted() { image.fill(Qt::white); }
    // The bounding box of the non-white pixels.
    QRect drawn() const {
        QRect box;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixel(x, y) != qRgb(255, 255, 255))
                    box |= QRect(x, y, 1, 1);
        return box;
    }
};

std::unique_ptr<TBitmap> solid(int w, int h) {
    auto b = std::make_unique<TBitmap>(w, h);
    b->Canvas()->Brush.Color = clRed;
    b->Canvas()->FillRect(Rect(0, 0, w, h));
    return b;
}

} // namespace

TEST(Fitting, StretchPropDrawCentresAndKeepsProportions) {
    const auto wide = solid(200, 100);
    Painted a;
    qxtStretchPropDraw(wide.get(), Rect(0, 0, 100, 100), &a.canvas);
    EXPECT_EQ(a.drawn(), QRect(0, 25, 100, 50));
    const auto tall = solid(100, 200);
    Painted b;
    qxtStretchPropDraw(tall.get(), Rect(0, 0, 100, 100), &b.canvas);
    EXPECT_EQ(b.drawn(), QRect(25, 0, 50, 100));
    // Integer division truncates: 3 x 7 into 10 x 10 gives 4 x 10 at left 3.
    const auto odd = solid(3, 7);
    Painted c;
    qxtStretchPropDraw(odd.get(), Rect(0, 0, 10, 10), &c.canvas);
    EXPECT_EQ(c.drawn(), QRect(3, 0, 4, 10));
    TBitmap empty;
    Painted d;
    qxtStretchPropDraw(&empty, Rect(0, 0, 10, 10), &d.canvas);
    EXPECT_TRUE(d.drawn().isNull());
}

TEST(Fitting, ZoomInRectSizesTheDestinationOnly) {
    const auto src = solid(200, 100);
    TBitmap dest(7, 7);
    qxtZoomInRect(src.get(), Rect(40, 40, 90, 90), &dest);
    EXPECT_EQ(dest.Width(), 50);
    EXPECT_EQ(dest.Height(), 25);
    EXPECT_EQ(dest.Canvas()->Pixels(49, 24), clRed);
    TBitmap empty;
    qxtZoomInRect(&empty, Rect(0, 0, 10, 10), &dest);
    EXPECT_EQ(dest.Width(), 50);
}

TEST(Cursor, ScreenCursorChangesAtOnce) {
    qxtSetScreenCursor(crHourGlass);
    EXPECT_EQ(Screen()->Cursor(), crHourGlass);
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    qxtSetScreenCursor(crDefault);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}
