#include "Dialogs.h"
#include "PluginSupport.h"
#include "QXAbout.h"
#include "QXHintED.h"
#include "TComponent.h"
#include "TestSupport.h"

#include <QAction>
#include <QDataStream>
#include <QLabel>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QUndoStack>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionManager>
#include <functional>

// A control with a file name that a file chooser edits, registered for this test only, so the
// way from a registered editor to the form is checked whichever classes are built. The editor
// is registered for "Filename", the control spells it "FileName", as the WAV component does.
class TQXChooserTestControl : public TControl {
    Q_OBJECT
    Q_PROPERTY(QString FileName READ Filename WRITE SetFilename)
    Q_PROPERTY(QString Position READ Position WRITE SetPosition)
public:
    using TControl::TControl;
    QString Filename() const { return m_filename; }
    void SetFilename(const QString& value) { m_filename = value; }
    // A live figure the control updates by itself, as a status panel does with its caption.
    QString Position() const { return m_position; }
    void SetPosition(const QString& value) { m_position = value; }

private:
    QString m_filename;
    QString m_position;
};

namespace {

class TTestFileProperty : public TStringProperty {
public:
    using TStringProperty::TStringProperty;
    TPropertyAttributes GetAttributes() const override {
        return TStringProperty::GetAttributes().Include(paDialog);
    }
    void Edit() override {
        QString file = GetValue();
        if (OpenFileDialog(QStringLiteral("Datei"), QStringLiteral("*.wav"), file))
            SetValue(file);
    }
};

// The entry of a widget's task menu with this text, or nullptr.
QAction* actionOf(qxtest::DesignerForm& designer, QWidget* widget, const QString& text) {
    auto* menu =
        qt_extension<QDesignerTaskMenuExtension*>(designer.core()->extensionManager(), widget);
    if (!menu)
        return nullptr;
    for (QAction* a : menu->taskActions())
        if (a->text() == text)
            return a;
    return nullptr;
}

// Answers the hint editor with a text (or cancels it) and every chooser with a path.
class EditorAnswers {
public:
    EditorAnswers() {
        m_previous = SetDialogHandler([this](TDialogRequest& r) {
            requests << r;
            if (whileOpen)
                whileOpen();
            if (auto* hint = qobject_cast<THintStringEditDialog*>(r.Form)) {
                shown << hint->Memo->toPlainText();
                hint->Memo->setPlainText(hintText);
                return answer;
            }
            if (r.Kind == dkOpenFile || r.Kind == dkSelectDirectory) {
                r.Path = path;
                return answer;
            }
            return int(mrOk);
        });
    }
    ~EditorAnswers() { SetDialogHandler(m_previous); }
    QString hintText;
    QString path;
    int answer = mrOk;
    std::function<void()> whileOpen; // what happens on the form while the dialog is open
    QList<TDialogRequest> requests;
    QStringList shown; // the texts the hint editor opened with

private:
    TDialogHandler m_previous;
};

// A property of the widget by its name in any case; invalid when it has none.
QVariant propertyOf(const QObject* object, const char* name) {
    const QMetaObject* mo = object->metaObject();
    for (int i = 0; i < mo->propertyCount(); ++i)
        if (qstricmp(mo->property(i).name(), name) == 0)
            return mo->property(i).read(object);
    return {};
}

// A tenth of a second of 8-bit mono sound at 8000 Hz, in a WAV file.
QByteArray shortWave() {
    const quint32 samples = 800;
    QByteArray wav;
    QDataStream out(&wav, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("RIFF", 4);
    out << quint32(36 + samples);
    out.writeRawData("WAVEfmt ", 8);
    out << quint32(16) << quint16(1) << quint16(1) << quint32(8000) << quint32(8000) << quint16(1)
        << quint16(8);
    out.writeRawData("data", 4);
    out << samples;
    for (quint32 i = 0; i < samples; ++i)
        out << quint8(128 + (i % 40 < 20 ? 60 : -60));
    return wav;
}

const QString twoLines = QStringLiteral("Erste Zeile\nzweite Zeile mit Ümlaut");

} // namespace

namespace {

// The text if the form saves it as a property value, else an empty string.
QString savedText(qxtest::DesignerForm& designer, const QString& text) {
    const QString saved = designer.form()->contents();
    return saved.contains(QStringLiteral("<string>%1</string>").arg(text)) ? text : QString();
}

} // namespace

// On every widget of the palette the hint editor writes the tool tip through the form: the
// property is marked changed and saved with the form, the next edit starts from it, and one
// undo takes it back. A cancelled editor changes nothing.
TEST(DesignerTaskMenu, HintEditorWritesTheToolTipThroughTheForm) {
    QDesignerCustomWidgetCollectionInterface* collection = qxtest::loadPlugin();
    ASSERT_NE(collection, nullptr);
    for (QDesignerCustomWidgetInterface* entry : collection->customWidgets()) {
        SCOPED_TRACE(entry->name().toStdString());
        EditorAnswers answers;
        qxtest::DesignerForm designer;
        QWidget* widget = designer.drop(entry);
        ASSERT_NE(widget, nullptr);
        QAction* hint = actionOf(designer, widget, QStringLiteral("Hint bearbeiten..."));
        ASSERT_NE(hint, nullptr);
        QUndoStack* history = designer.form()->commandHistory();
        const int steps = history->count();
        auto* sheet = qt_extension<QDesignerPropertySheetExtension*>(
            designer.core()->extensionManager(), widget);
        ASSERT_NE(sheet, nullptr);
        const int toolTip = sheet->indexOf(QStringLiteral("toolTip"));

        answers.answer = mrCancel;
        answers.hintText = QStringLiteral("verworfen");
        hint->trigger();
        EXPECT_EQ(history->count(), steps);
        EXPECT_FALSE(sheet->isChanged(toolTip));
        EXPECT_TRUE(savedText(designer, answers.hintText).isEmpty());

        answers.answer = mrOk;
        answers.hintText = twoLines;
        hint->trigger();
        EXPECT_EQ(history->count(), steps + 1);
        EXPECT_TRUE(sheet->isChanged(toolTip));
        EXPECT_TRUE(designer.form()->isDirty());
        EXPECT_EQ(savedText(designer, twoLines), twoLines);
        // Designer keeps tool tips off the widgets it shows on the form.
        EXPECT_TRUE(widget->toolTip().isEmpty());

        answers.hintText = QStringLiteral("Dritte Fassung");
        hint->trigger();
        EXPECT_EQ(answers.shown, (QStringList{QString(), QString(), twoLines}));
        EXPECT_EQ(savedText(designer, answers.hintText), answers.hintText);
        EXPECT_EQ(history->count(), steps + 2);

        history->undo();
        EXPECT_EQ(savedText(designer, twoLines), twoLines);
        history->undo();
        EXPECT_TRUE(savedText(designer, twoLines).isEmpty());
        history->redo();
        EXPECT_EQ(savedText(designer, twoLines), twoLines);
        ASSERT_FALSE(answers.requests.isEmpty());
        EXPECT_EQ(answers.requests.last().Text, QStringLiteral("Hinweis bearbeiten"));
    }
}

// Widgets of other libraries on the same form get the hint editor too, but keep Designer's own
// double-click action.
TEST(DesignerTaskMenu, HintEditorOnEveryWidget) {
    ASSERT_NE(qxtest::loadPlugin(), nullptr);
    qxtest::DesignerForm designer;
    ASSERT_NE(qxtest::entryOf(QStringLiteral("TQXGauge")), nullptr);
    designer.drop(qxtest::entryOf(QStringLiteral("TQXGauge")));
    auto* button = designer.drop<QPushButton>();
    auto* menu =
        qt_extension<QDesignerTaskMenuExtension*>(designer.core()->extensionManager(), button);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->preferredEditAction(), nullptr);
    ASSERT_EQ(menu->taskActions().size(), 1);
    EditorAnswers answers;
    answers.hintText = QStringLiteral("Knopf");
    menu->taskActions().first()->trigger();
    EXPECT_EQ(savedText(designer, answers.hintText), answers.hintText);
    designer.form()->commandHistory()->undo();
    EXPECT_TRUE(savedText(designer, answers.hintText).isEmpty());
    // Objects that are no widgets get no menu.
    QAction plain(nullptr);
    EXPECT_EQ(
        qt_extension<QDesignerTaskMenuExtension*>(designer.core()->extensionManager(), &plain),
        nullptr);
}

// The about entry shows the about dialog of the component and leaves the form unchanged.
TEST(DesignerTaskMenu, AboutShowsTheDialogAndChangesNothing) {
    QDesignerCustomWidgetInterface* gauge = qxtest::entryOf(QStringLiteral("TQXGauge"));
    ASSERT_NE(gauge, nullptr);
    qxtest::DesignerForm designer;
    QWidget* widget = designer.drop(gauge);
    QAction* about = actionOf(designer, widget, QStringLiteral("About QXTools..."));
    ASSERT_NE(about, nullptr);
    QString shownClass;
    const TDialogHandler previous = SetDialogHandler([&](TDialogRequest& r) {
        if (auto* dialog = qobject_cast<TfrmQXTVersion*>(r.Form))
            shownClass = dialog->lblClassName->text();
        return int(mrOk);
    });
    about->trigger();
    SetDialogHandler(previous);
    EXPECT_EQ(shownClass, QStringLiteral("TQXGauge"));
    EXPECT_EQ(designer.form()->commandHistory()->count(), 0);
    EXPECT_FALSE(designer.form()->isDirty());
}

// Any dialog editor registered for a class becomes an entry of its task menu, named after the
// property; its choice goes into the form as one undoable step.
TEST(DesignerTaskMenu, RegisteredEditorsBecomeEntries) {
    ASSERT_NE(qxtest::loadPlugin(), nullptr);
    RegisterPropertyEditor(QStringLiteral("string"), QStringLiteral("TQXChooserTestControl"),
                           QStringLiteral("Filename"),
                           EditorClassOf<TTestFileProperty>("TTestFileProperty"));
    qxtest::DesignerForm designer;
    designer.drop(qxtest::entryOf(QStringLiteral("TQXGauge")));
    auto* control = designer.drop<TQXChooserTestControl>();
    auto* menu =
        qt_extension<QDesignerTaskMenuExtension*>(designer.core()->extensionManager(), control);
    ASSERT_NE(menu, nullptr);
    QStringList texts;
    for (QAction* a : menu->taskActions())
        texts << a->text();
    // The file chooser and the hint editor; the test control carries no about property. (The
    // order follows the registrations, which depends on the classes built.)
    texts.sort();
    EXPECT_EQ(texts, (QStringList{"Filename bearbeiten...", "Hint bearbeiten..."}));

    qxtest::TempDir dir;
    EditorAnswers answers;
    answers.path = dir.file(QStringLiteral("klang.wav"));
    answers.whileOpen = [control]() { control->SetPosition(QStringLiteral("00:42")); };
    QAction* chooser = actionOf(designer, control, QStringLiteral("Filename bearbeiten..."));
    ASSERT_NE(chooser, nullptr);
    chooser->trigger();
    ASSERT_EQ(answers.requests.size(), 1);
    EXPECT_EQ(answers.requests[0].Kind, dkOpenFile);
    EXPECT_EQ(control->Filename(), answers.path);
    const QString saved = designer.form()->contents();
    EXPECT_TRUE(saved.contains(answers.path));
    // The live figure changed meanwhile, but not by the editor: the form does not take it.
    EXPECT_FALSE(saved.contains(QStringLiteral("00:42")));
    EXPECT_EQ(designer.form()->commandHistory()->count(), 1);
    designer.form()->commandHistory()->undo();
    EXPECT_TRUE(control->Filename().isEmpty());
    EXPECT_EQ(control->Position(), QStringLiteral("00:42"));
    // The gauge is no chooser control: no file entry there.
    QWidget* gauge =
        designer.form()->mainContainer()->findChild<QWidget*>(QStringLiteral("QXGauge1"));
    ASSERT_NE(gauge, nullptr);
    EXPECT_EQ(actionOf(designer, gauge, QStringLiteral("Filename bearbeiten...")), nullptr);
}

// The WAV component's file and the picture box's directory are chosen from their task menus
// once those classes are part of the build.
TEST(DesignerTaskMenu, WavFileAndPictureDirectory) {
    struct Case {
        const char* className;
        const char* action;
        TDialogKind chooser;
        const char* property;
    };
    const Case cases[] = {
        {"TQXWAV", "Filename bearbeiten...", dkOpenFile, "Filename"},
        {"TQXPicBox", "PicPattern bearbeiten...", dkSelectDirectory, "PicPattern"}};
    QStringList missing;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.className);
        QDesignerCustomWidgetInterface* entry = qxtest::entryOf(QLatin1String(c.className));
        if (!entry) {
            missing << QLatin1String(c.className);
            continue;
        }
        qxtest::DesignerForm designer;
        QWidget* widget = designer.drop(entry);
        QAction* action = actionOf(designer, widget, QLatin1String(c.action));
        ASSERT_NE(action, nullptr);
        qxtest::TempDir dir;
        EditorAnswers answers;
        answers.path =
            c.chooser == dkOpenFile ? dir.write(QStringLiteral("a.wav"), shortWave()) : dir.path();
        const QVariant before = propertyOf(widget, c.property);
        action->trigger();
        ASSERT_FALSE(answers.requests.isEmpty());
        EXPECT_EQ(answers.requests[0].Kind, c.chooser);
        EXPECT_NE(propertyOf(widget, c.property), before);
        EXPECT_TRUE(propertyOf(widget, c.property).toString().startsWith(dir.path()));
        EXPECT_EQ(designer.form()->commandHistory()->count(), 1);
        designer.form()->commandHistory()->undo();
        EXPECT_EQ(propertyOf(widget, c.property), before);
    }
    if (!missing.isEmpty())
        GTEST_SKIP() << missing.join(QLatin1Char(' ')).toStdString()
                     << " not part of the build yet";
}

#include "TaskMenuTest.moc"
