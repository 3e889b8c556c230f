#include "DemoPage.h"
#include "QXAbout.h"
#include "QxutilText.h"
#include "TGraphic.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QSpinBox>

namespace {

// The split, comment and justification helpers on text the user types.
QWidget* textHelpers(QWidget* parent) {
    auto* w = new QWidget(parent);
    auto* form = new QFormLayout(w);
    auto* text = new QLineEdit(QStringLiteral("alpha;beta;;delta ;comment"), w);
    auto* n = new QSpinBox(w);
    n->setRange(0, 9);
    n->setValue(2);
    auto* split = new QLabel(w);
    auto* splitLast = new QLabel(w);
    auto* noComment = new QLabel(w);
    auto* count = new QLabel(w);
    form->addRow(QStringLiteral("Text"), text);
    form->addRow(QStringLiteral("Field N"), n);
    form->addRow(QStringLiteral("qxtSplitPar"), split);
    form->addRow(QStringLiteral("qxtSplitParLast (last)"), splitLast);
    form->addRow(QStringLiteral("qxtDelComment"), noComment);
    form->addRow(QStringLiteral("qxtInCount(';')"), count);
    auto update = [=]() {
        const QString s = text->text();
        split->setText(QLatin1Char('"') + qxtSplitPar(s, QLatin1Char(';'), n->value()) +
                       QLatin1Char('"'));
        splitLast->setText(QLatin1Char('"') + qxtSplitParLast(s, QLatin1Char(';'), n->value(), 1) +
                           QLatin1Char('"'));
        noComment->setText(QLatin1Char('"') + qxtDelComment(s) + QLatin1Char('"'));
        count->setText(QString::number(qxtInCount(s, QLatin1Char(';'))));
    };
    QObject::connect(text, &QLineEdit::textChanged, w, update);
    QObject::connect(n, &QSpinBox::valueChanged, w, update);
    update();
    return w;
}

// The package picture drawn proportionally into a wide, a square and a tall cell.
class FitView : public QWidget {
public:
    explicit FitView(QWidget* parent) : QWidget(parent) {
        setMinimumHeight(110);
        // A bitmap has no alpha: put the picture on white first.
        QImage wide(96, 64, QImage::Format_RGB32);
        wide.fill(Qt::white);
        QPainter(&wide).drawImage(QRect(0, 0, 96, 64), QXProgramPicture(64));
        m_picture.SetImage(wide);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        TCanvas canvas;
        canvas.Attach(&p, rect());
        const TRect cells[] = {Bounds(4, 4, 200, 100), Bounds(214, 4, 100, 100),
                               Bounds(324, 4, 50, 100)};
        for (const TRect& cell : cells) {
            canvas.Brush.Color = clWhite;
            canvas.Pen.Color = clGray;
            canvas.Rectangle(cell);
            qxtStretchPropDraw(&m_picture, cell, &canvas);
        }
        canvas.Detach();
    }

private:
    TBitmap m_picture;
};

} // namespace

QXDEMO_PAGE({qxdemo::Family::Utilities, QStringLiteral("Text helpers"), textHelpers})
QXDEMO_PAGE({qxdemo::Family::Utilities, QStringLiteral("Proportional drawing"),
             [](QWidget* parent) -> QWidget* { return new FitView(parent); }})
