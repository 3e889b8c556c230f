#include "QXWidgetTexts.h"

#include <QHash>

namespace {

struct Row {
    const char* className;
    const char* toolTip;
    const char* whatsThis;
};

// Every widget class of the package, drawn or not yet built; a class that lands without a row
// shows up in the plugin's tests.
constexpr Row rows[] = {
    {"TQXAnimate", "Animationsstreifen",
     "Spielt die Bilder eines Animationsstreifens nacheinander ab."},
    {"TQXPicClip", "Bildausschnitte",
     "Zerlegt ein Bild in ein Raster gleich großer Ausschnitte, die einzeln abrufbar sind."},
    {"TQXScrollText", "Lauftext",
     "Lässt einen Text von rechts nach links oder von unten nach oben durchlaufen, auf Wunsch "
     "mit Schatten."},
    {"TQXStars", "Sternenflug",
     "Zeigt einen Flug durch ein Feld von bis zu 500 Sternen, im Takt des Intervalls."},
    {"TQXBounce", "Springender Ball",
     "Ein geworfener Ball mit Schwerkraft und Reibung, selbst gezeichnet oder als bewegtes "
     "Steuerelement."},
    {"TQX3D", "3D-Anzeige", "Zeigt ein dreidimensionales Objekt."},
    {"TQXWAV", "WAV-Datei",
     "Spielt eine WAV-Datei ab und zeichnet ihre Wellenform; Filename wählt die Datei."},
    {"TQXGauge", "Balkenanzeige",
     "Eine Kastenanzeige für einen Wert zwischen Minimum und Maximum, mit gehaltener "
     "Spitze."},
    {"TQXLCDPanel", "LCD-Anzeige", "Zeigt Ziffern und Text in Segmenten wie eine LCD-Anzeige."},
    {"TQXDOTPanel", "Punktmatrix-Anzeige",
     "Ein Lauftext aus Leuchtpunkten, gezeichnet aus einer Punktmatrix-Schrift."},
    {"TQX3dLabel", "3D-Beschriftung",
     "Eine erhabene, vertiefte oder schattierte Beschriftung mit Zeichenabstand und Rahmen."},
    {"TQXPanel", "Systemanzeige",
     "Ein Statusfeld mit laufend aktualisierten Werten wie Prozessorlast und Speicher, auf "
     "Wunsch als Kurve."},
    {"TQXPicBox", "Bildübersicht",
     "Zeigt die Bilder und Symbole eines Verzeichnisses als Vorschaubilder; PicPattern wählt "
     "das Verzeichnis."},
    {"TQXIcoBox", "Symbolliste", "Listet die Symbole einer Datei auf."},
    {"TQXFontCombo", "Schriftauswahl",
     "Ein Auswahlfeld mit den installierten Schriften, nach Zeichensatz und Art gefiltert."},
    {"TQXDriveTab", "Laufwerksreiter",
     "Reiter mit den Laufwerken des Systems, jeder mit dem Symbol seiner Laufwerksart."},
    {"TQXBiBtn", "Zweistufiger Schalter", "Ein Schalter mit zwei Zuständen."},
    {"TQXAutoButton", "Wiederholschalter",
     "Ein Schalter, der beim Festhalten sein Ereignis wiederholt auslöst."},
    {"TQXGrabBar", "Trennleiste",
     "Eine Leiste zwischen zwei Bereichen, mit der deren Größe verändert wird."},
    {"TQXApp", "Anwendung", "Zeigt Informationen über die Anwendung."},
    {"TQXFillImage", "Farbverlauf",
     "Ein Hintergrund mit Regenbogen in Bändern, gekachelten Bildern oder Mustern."},
    {"TQXFxImage", "Überblendbild", "Ein Bild, das Block für Block in das nächste Bild übergeht."},
    {"TQXImage", "Bild",
     "Ein Bild, das seinen Platz ausfüllt, ohne das Seitenverhältnis zu "
     "verzerren."},
    {"TQXWavPlay", "Wiedergabeliste",
     "Spielt eine Liste von Klangdateien ab, auf Wunsch in zufälliger Reihenfolge."},
};

} // namespace

QXWidgetTexts QXWidgetTextsOf(const QString& className) {
    static const QHash<QString, QXWidgetTexts> texts = [] {
        QHash<QString, QXWidgetTexts> h;
        for (const Row& r : rows)
            h.insert(QString::fromLatin1(r.className),
                     {QString::fromUtf8(r.toolTip), QString::fromUtf8(r.whatsThis)});
        return h;
    }();
    return texts.value(className);
}
