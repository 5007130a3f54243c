#include "shell/TarnAppearance.h"
#include "shell/TarnShellTables.h"
#include "shell/design/NativeSymbols.h"
#include "shell/design/NativeTheme.h"
#include "shell/design/NativeUndoToast.h"

#include <QDirIterator>
#include <QFile>
#include <QGuiApplication>
#include <QPalette>
#include <QRawFont>
#include <QRegularExpression>
#include <QSet>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// Every symbol name the navigation tables give a place.
QSet<QString> tableSymbols()
{
    QSet<QString> names;
    for (const TarnShellTables::Item &item : TarnShellTables::items())
        names.insert(item.symbol);
    for (const TarnShellTables::Child &child : TarnShellTables::children())
        names.insert(child.symbol);
    for (const TarnShellTables::Tile &tile : TarnShellTables::tiles())
        names.insert(tile.tile.symbol);
    for (const TarnAdminArea &area : TarnShellTables::adminAreas())
        names.insert(area.symbol);
    return names;
}

// Every `symbol: "name"` and `symbol: "a" : "b"` the window's QML names itself.
QSet<QString> qmlSymbols()
{
    static const QRegularExpression assignment(uR"re(symbol:\s*([^\n]+))re"_s);
    static const QRegularExpression quoted(uR"re("([a-z0-9.]+)")re"_s);
    QSet<QString> names;
    QDirIterator files(
        QStringLiteral(TARN_SOURCE_DIR "/src"), { u"*.qml"_s }, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(file.readAll());
        for (const QRegularExpressionMatch &line : assignment.globalMatch(text)) {
            for (const QRegularExpressionMatch &name : quoted.globalMatch(line.captured(1)))
                names.insert(name.captured(1));
        }
    }
    return names;
}

// The icon font's names for its glyphs, as its package lists them.
QHash<QString, char16_t> fontCodepoints()
{
    QHash<QString, char16_t> codepoints;
    QFile file(QStringLiteral(TARN_ICON_CODEPOINTS));
    if (!file.open(QIODevice::ReadOnly))
        return codepoints;
    static const QRegularExpression row(uR"re("([a-z0-9_]+)": ([0-9a-f]+),)re"_s);
    for (const QRegularExpressionMatch &match : row.globalMatch(QString::fromUtf8(file.readAll())))
        codepoints.insert(match.captured(1), static_cast<char16_t>(match.captured(2).toUInt(nullptr, 16)));
    return codepoints;
}

double luminance(const QColor &colour)
{
    const auto linear = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

// `colour` laid over the opaque `ground`.
QColor over(const QColor &colour, const QColor &ground)
{
    const double a = colour.alphaF();
    return QColor::fromRgbF(static_cast<float>(colour.redF() * a + ground.redF() * (1 - a)),
        static_cast<float>(colour.greenF() * a + ground.greenF() * (1 - a)),
        static_cast<float>(colour.blueF() * a + ground.blueF() * (1 - a)));
}

double contrast(const QColor &text, const QColor &ground)
{
    const double a = luminance(over(text, ground));
    const double b = luminance(ground);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

} // namespace

class TestDesign : public QObject {
    Q_OBJECT

private slots:
    void everySymbolHasAGlyph_data();
    void everySymbolHasAGlyph();
    void schemeChoice();
    void followsTheDesktopPalette();
    void tintsAndTextSizes_data();
    void tintsAndTextSizes();
    void everyChoiceStaysReadable();
    void undoOffer();

private:
    QTemporaryDir m_folder;
};

void TestDesign::everySymbolHasAGlyph_data()
{
    QTest::addColumn<QSet<QString>>("names");
    QTest::addRow("the navigation tables") << tableSymbols();
    QTest::addRow("the window's QML") << qmlSymbols();
}

void TestDesign::everySymbolHasAGlyph()
{
    QFETCH(QSet<QString>, names);
    QVERIFY(names.size() > 10);
    QFile fontFile(u":/PiloTarn/Design/fonts/MaterialIcons-Regular.ttf"_s);
    QVERIFY(fontFile.open(QIODevice::ReadOnly));
    const QRawFont font(fontFile.readAll(), 20);
    QVERIFY(font.isValid());
    const QHash<QString, char16_t> codepoints = fontCodepoints();
    QVERIFY(!codepoints.isEmpty());

    QHash<QString, NativeSymbols::Symbol> table;
    for (const NativeSymbols::Symbol &row : NativeSymbols::all())
        table.insert(row.name, row);
    for (const QString &name : names) {
        QVERIFY2(table.contains(name), qPrintable(u"No icon for the symbol \"%1\""_s.arg(name)));
        const NativeSymbols::Symbol &row = table.value(name);
        QVERIFY2(font.supportsCharacter(QChar(row.codepoint)), qPrintable(name));
        // The codepoint is the glyph the row names, not merely some glyph.
        QCOMPARE(codepoints.value(row.icon), row.codepoint);
    }
}

void TestDesign::schemeChoice()
{
    QSettings preferences(m_folder.filePath(u"scheme.ini"_s), QSettings::IniFormat);
    NativeTheme theme(preferences);
    QCOMPARE(theme.colorScheme(), u"system"_s);
    QSignalSpy changed(&theme, &NativeTheme::changed);

    theme.setColorScheme(u"dark"_s);
    QVERIFY(theme.dark());
    QCOMPARE(preferences.value(NativeTheme::colorSchemeKey).toString(), u"dark"_s);
    QCOMPARE(changed.size(), 1);
    // A screenshot's forced scheme wins for the run and is never saved.
    theme.forceDark(false);
    QVERIFY(!theme.dark());
    QCOMPARE(preferences.value(NativeTheme::colorSchemeKey).toString(), u"dark"_s);
    theme.forceDark(std::nullopt);
    QVERIFY(theme.dark());

    theme.setColorScheme(u"sepia"_s);
    QCOMPARE(theme.colorScheme(), u"system"_s);
    preferences.setValue(NativeTheme::colorSchemeKey, u"light"_s);
    QVERIFY(!NativeTheme(preferences).dark());
    preferences.setValue(NativeTheme::colorSchemeKey, u"nonsense"_s);
    QCOMPARE(NativeTheme(preferences).colorScheme(), u"system"_s);
}

void TestDesign::followsTheDesktopPalette()
{
    QSettings preferences(m_folder.filePath(u"desktop.ini"_s), QSettings::IniFormat);
    NativeTheme theme(preferences);
    const QPalette original = QGuiApplication::palette();
    QPalette dark = original;
    dark.setColor(QPalette::Window, QColor(u"#202124"_s));
    QPalette light = original;
    light.setColor(QPalette::Window, QColor(u"#f4f4f4"_s));

    QGuiApplication::setPalette(dark);
    QTRY_VERIFY(theme.dark());
    QGuiApplication::setPalette(light);
    QTRY_VERIFY(!theme.dark());
    // A chosen scheme no longer follows.
    theme.setColorScheme(u"dark"_s);
    QGuiApplication::setPalette(light);
    QVERIFY(theme.dark());
    QGuiApplication::setPalette(original);
}

void TestDesign::tintsAndTextSizes_data()
{
    QTest::addColumn<QString>("scheme");
    QTest::addColumn<QString>("background");
    QTest::addColumn<QString>("textSize");
    QTest::addColumn<QColor>("window");
    QTest::addColumn<double>("body");

    QTest::addRow("light mist, standard") << u"light"_s << u"mist"_s << u"standard"_s << QColor(u"#ebf1f7"_s) << 16.0;
    QTest::addRow("dark mist, large") << u"dark"_s << u"mist"_s << u"large"_s << QColor(u"#1f242b"_s) << 19.2;
    QTest::addRow("dark paper, larger") << u"dark"_s << u"paper"_s << u"larger"_s << QColor(u"#262420"_s) << 22.4;
    QTest::addRow("an unknown tint is plain")
        << u"dark"_s << u"neon"_s << u"standard"_s << QColor(u"#1b1c20"_s) << 16.0;
}

void TestDesign::tintsAndTextSizes()
{
    QFETCH(QString, scheme);
    QFETCH(QString, background);
    QFETCH(QString, textSize);
    QFETCH(QColor, window);
    QFETCH(double, body);

    QSettings preferences(m_folder.filePath(u"tints.ini"_s), QSettings::IniFormat);
    NativeTheme theme(preferences);
    theme.setColorScheme(scheme);
    theme.setAppearance(u"blue"_s, background, TarnAppearance::choice(TarnAppearance::textSizes(), textSize).scale);
    QCOMPARE(theme.colours().window, window);
    QCOMPARE(theme.type().body, body);
}

void TestDesign::everyChoiceStaysReadable()
{
    QSettings preferences(m_folder.filePath(u"contrast.ini"_s), QSettings::IniFormat);
    NativeTheme theme(preferences);
    for (const QString &scheme : { u"light"_s, u"dark"_s }) {
        theme.setColorScheme(scheme);
        for (const TarnAppearanceChoice &accent : TarnAppearance::accents()) {
            for (const TarnAppearanceChoice &tint : TarnAppearance::backgrounds()) {
                theme.setAppearance(accent.value, tint.value, 1.0);
                const NativeColours colours = theme.colours();
                const QString what = scheme + u' ' + accent.value + u' ' + tint.value;
                for (const QColor &ground : { colours.window, colours.sidebar, colours.surface }) {
                    QVERIFY2(contrast(colours.text, ground) >= 7, qPrintable(what));
                    QVERIFY2(contrast(colours.secondaryText, ground) >= 4.5, qPrintable(what));
                    QVERIFY2(contrast(colours.accent, ground) >= 3, qPrintable(what));
                }
                QVERIFY2(contrast(colours.accentText, colours.accent) >= 3.5, qPrintable(what));
                QVERIFY2(contrast(colours.danger, colours.window) >= 4.5, qPrintable(what));
            }
        }
    }
}

void TestDesign::undoOffer()
{
    NativeUndoToast toast(std::chrono::milliseconds(50), nullptr);
    QSignalSpy undone(&toast, &NativeUndoToast::undone);
    QSignalSpy stood(&toast, &NativeUndoToast::stood);

    toast.offer(u"Archived"_s, u"mail-1"_s);
    QVERIFY(toast.shown());
    QCOMPARE(toast.text(), u"Archived"_s);
    toast.undo();
    QCOMPARE(undone.size(), 1);
    QCOMPARE(undone.constFirst().constFirst().toString(), u"mail-1"_s);
    QVERIFY(!toast.shown());
    // Undone means nothing stands later.
    QVERIFY(!stood.wait(150));

    // A second offer makes the first stand at once; the second stands when
    // its time is up, and a late undo does nothing.
    toast.offer(u"Archived"_s, u"mail-2"_s);
    toast.offer(u"Deleted"_s, u"mail-3"_s);
    QCOMPARE(stood.size(), 1);
    QCOMPARE(stood.at(0).constFirst().toString(), u"mail-2"_s);
    QVERIFY(stood.wait());
    QCOMPARE(stood.at(1).constFirst().toString(), u"mail-3"_s);
    QVERIFY(!toast.shown());
    toast.undo();
    QCOMPARE(undone.size(), 1);

    toast.offer(u"Moved"_s, u"mail-4"_s);
    toast.dismiss();
    QCOMPARE(stood.size(), 3);
    QCOMPARE(NativeUndoToast().property("shown").toBool(), false);
    QCOMPARE(NativeUndoToast::standardTime, std::chrono::milliseconds(10000));
}

QTEST_MAIN(TestDesign)
#include "tst_design.moc"
