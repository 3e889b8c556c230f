#include "DemoControls.h"

#include <QColorDialog>
#include <QIcon>
#include <QPixmap>
#include <QPushButton>
#include <QSpinBox>

namespace qxdemo {

QPushButton* colourButton(const QString& text, TColor initial, std::function<void(TColor)> set) {
    auto* button = new QPushButton(text);
    auto show = [button](TColor c) {
        QPixmap swatch(14, 14);
        swatch.fill(TColorToQColor(c));
        button->setIcon(QIcon(swatch));
    };
    show(initial);
    QObject::connect(
        button, &QPushButton::clicked, button, [button, set, show, current = initial]() mutable {
            const QColor c =
                QColorDialog::getColor(TColorToQColor(current), button, button->text());
            if (!c.isValid())
                return;
            current = QColorToTColor(c);
            set(current);
            show(current);
        });
    return button;
}

QSpinBox* spin(const QString& prefix, int low, int high, int value) {
    auto* box = new QSpinBox;
    box->setRange(low, high);
    box->setValue(value);
    box->setPrefix(prefix);
    return box;
}

} // namespace qxdemo
