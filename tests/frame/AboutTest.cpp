#include "QXAbout.h"
#include "QXTools.h"
#include "TComponent.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

// Components carrying the about property with a plain and a beta version text.
class TAboutPlain : public TComponent, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
public:
    explicit TAboutPlain(QObject* owner = nullptr)
        : TComponent(owner), TQXAboutCarrier(QXCopyVersion) {}
};

class TAboutBeta : public TComponent, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
public:
    explicit TAboutBeta(QObject* owner = nullptr)
        : TComponent(owner), TQXAboutCarrier(QXPanelVersion) {}
};

// Rows of the label's picture that hold dark (text) pixels, grouped into bands.
int textLines(QLabel* label) {
    const QImage img = label->grab().toImage();
    int bands = 0;
    bool inBand = false;
    for (int y = 0; y < img.height(); ++y) {
        bool dark = false;
        for (int x = 0; x < img.width() && !dark; ++x)
            dark = qGray(img.pixel(x, y)) < 100;
        if (dark && !inBand)
            ++bands;
        inBand = dark;
    }
    return bands;
}

} // namespace

TEST(AboutString, KeepsAtMostFortyCharacters) {
    const TQXAboutString s(QString(50, QLatin1Char('x')));
    EXPECT_EQ(s.Length(), 40);
    constexpr TQXAboutString beta = "15.11.96^M(Beta)";
    EXPECT_EQ(beta.ToQString(), QStringLiteral("15.11.96^M(Beta)"));
}

TEST(AboutProperty, ReadsTheVersionAndDropsWrites) {
    TAboutPlain c;
    EXPECT_EQ(c.property("About_QXTools").toString(), QStringLiteral("25.04.98"));
    c.setProperty("About_QXTools", QStringLiteral("01.01.01"));
    c.SetAboutQXT(TQXAboutString("02.02.02"));
    EXPECT_EQ(c.property("About_QXTools").toString(), QStringLiteral("25.04.98"));
    EXPECT_EQ(c.GetAboutQXT(), QXCopyVersion);
}

TEST(AboutProperty, EditorShowsKlickMeAndOpensADialog) {
    TAboutPlain plain;
    TAboutBeta beta;
    TQXAboutProperty editor({&plain, &beta}, "About_QXTools");
    EXPECT_EQ(editor.GetAttributes(), TPropertyAttributes{paDialog});
    EXPECT_EQ(editor.GetValue(), QStringLiteral("Klick me.."));

    // A multi-selection names its first component only.
    auto dlg = editor.CreateDialog();
    EXPECT_EQ(dlg->windowTitle(), QStringLiteral("QXTools AboutDialog"));
    EXPECT_EQ(dlg->lblQXTVersion->text(), QStringLiteral("QXTools V 3.0d"));
    EXPECT_EQ(dlg->lblClassName->text(), QStringLiteral("TAboutPlain"));
    EXPECT_EQ(dlg->lblStand->text(), QStringLiteral("Stand : 25.04.98"));
    EXPECT_EQ(dlg->size(), QSize(264, 219));
}

TEST(AboutProperty, BetaTextBreaksOntoASecondLine) {
    TAboutPlain plain;
    TAboutBeta beta;
    auto plainDlg = TQXAboutProperty({&plain}, "About_QXTools").CreateDialog();
    auto betaDlg = TQXAboutProperty({&beta}, "About_QXTools").CreateDialog();
    EXPECT_EQ(betaDlg->lblStand->text(), QStringLiteral("Stand : 14.12.96\n\r(Beta)"));
    plainDlg->show();
    betaDlg->show();
    EXPECT_EQ(textLines(plainDlg->lblStand), 1);
    EXPECT_EQ(textLines(betaDlg->lblStand), 2);
    if (qEnvironmentVariableIsSet("QX_ABOUT_SHOT"))
        betaDlg->grab().save(qEnvironmentVariable("QX_ABOUT_SHOT"));
}

TEST(AboutProperty, EditRunsTheDialogModally) {
    TAboutBeta beta;
    TQXAboutProperty editor({&beta}, "About_QXTools");
    QString shownClass;
    int standLines = 0;
    QTimer::singleShot(0, [&]() {
        auto* dlg = qobject_cast<TfrmQXTVersion*>(QApplication::activeModalWidget());
        ASSERT_NE(dlg, nullptr);
        shownClass = dlg->lblClassName->text();
        standLines = textLines(dlg->lblStand);
        dlg->btnOKButton->click();
    });
    editor.Edit();
    EXPECT_EQ(shownClass, QStringLiteral("TAboutBeta"));
    EXPECT_EQ(standLines, 2);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

#include "AboutTest.moc"
