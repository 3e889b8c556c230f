// examples/application.cpp: every tooltip of the program as a thought bubble, and a font combo
// box whose choice sets the font of an editor.
#include <qxtools/Qxfntcbo.h>
#include <qxtools/Qxhint.h>

#include <QApplication>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <cstdio>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QWidget window;
    auto* layout = new QVBoxLayout(&window);

    // One TQXHint serves the whole program; "^M" breaks a tooltip's line.
    auto* hints = new TQXHint(&window);
    hints->SetColor(clAqua);
    hints->SetHintPosition(hpBelowRight);
    hints->SetActive(true);

    auto* editor = new QPlainTextEdit;
    editor->setToolTip(QStringLiteral("Hier steht der Text.^MDie Schrift wählt die Liste oben."));
    auto* fonts = new TQXFontCombo;
    fonts->SetControl(editor);
    layout->addWidget(fonts);
    layout->addWidget(editor);

    // SelFont takes any case and ignores a family the list does not hold; the list is filled
    // when the combo is first shown.
    fonts->SetSelFont(QStringLiteral("dejavu sans"));
    window.show();

    // With a file name the window is drawn into it and the program ends.
    if (argc > 1) {
        std::printf("Schrift: %s\n", qPrintable(fonts->currentText()));
        return window.grab().save(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
    }
    return app.exec();
}
