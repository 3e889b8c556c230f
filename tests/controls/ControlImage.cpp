#include "ControlImage.h"

#include <QDir>

namespace qxtest {

QImage renderControl(QWidget& control) {
    QImage image(control.size(), QImage::Format_RGB32);
    image.fill(QColor(255, 0, 255));
    control.render(&image);
    return image;
}

QImage renderSettled(QWidget& control) {
    for (int i = 0; i < 10; ++i) {
        const QSize before = control.size();
        QImage image = renderControl(control);
        if (control.size() == before)
            return image;
    }
    ADD_FAILURE() << "the control kept resizing itself";
    return {};
}

::testing::AssertionResult matchesGolden(const QImage& image, const QString& name) {
    const QString dir = QStringLiteral(QX_TEST_DIR "/golden/");
    const QString file = dir + name + ".png";
    const QImage actual = image.convertToFormat(QImage::Format_RGB32);
    if (qEnvironmentVariableIntValue("QX_UPDATE_GOLDEN") == 1) {
        QDir().mkpath(dir);
        if (!actual.save(file))
            return ::testing::AssertionFailure() << "cannot write " << file.toStdString();
        return ::testing::AssertionSuccess();
    }
    const QImage golden(file);
    if (golden.isNull())
        return ::testing::AssertionFailure() << "no golden picture " << file.toStdString();
    const QImage expected = golden.convertToFormat(QImage::Format_RGB32);
    if (expected.size() != actual.size())
        return ::testing::AssertionFailure()
               << name.toStdString() << ": size " << actual.width() << "x" << actual.height()
               << ", golden " << expected.width() << "x" << expected.height();
    for (int y = 0; y < actual.height(); ++y)
        for (int x = 0; x < actual.width(); ++x)
            if (actual.pixel(x, y) != expected.pixel(x, y)) {
                const QString saved = QDir::temp().filePath(name + "-actual.png");
                actual.save(saved);
                return ::testing::AssertionFailure()
                       << name.toStdString() << ": first difference at (" << x << ", " << y
                       << "); picture saved as " << saved.toStdString();
            }
    return ::testing::AssertionSuccess();
}

} // namespace qxtest
