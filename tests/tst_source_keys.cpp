#include "GeneratedKeys.h"
#include "Table.h"
#include "TextUses.h"

#include <QTest>

namespace
{

QVector<KeyText> textsOf(const QString& urls)
{
    QVector<KeyText> texts;
    for (QString url : urls.split(' '))
        texts.append({url.replace("__", " "), "Text", "Comment"});
    return texts;
}

SourceLanguage languageOf(const QString& name)
{
    return name == "qml"   ? SourceLanguage::Qml
           : name == "c++" ? SourceLanguage::Cpp
                           : SourceLanguage::Json;
}

/** "URL", "beginning*" or "?" for each use. */
QString shownUses(const QVector<TextUse>& uses)
{
    QStringList shown;
    for (const TextUse& use : uses) {
        shown.append(use.kind == TextUse::Kind::Unknown     ? QString("?")
                     : use.kind == TextUse::Kind::Beginning ? use.url + '*'
                                                            : use.url);
    }
    return shown.join(' ');
}

UrlNames exampleNames()
{
    const QVector<KeyText> texts = textsOf("Menu Menu/Save class/Air-Flow");
    return {keyHeaderNames(texts), keySingletonNames(texts), {"labelTextId"}, {"de_DE"}};
}

} // namespace

/** Text URLs as constants of generated sources, and as they are used in sources that people write.
 */
class SourceKeysTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesConstants_data()
    {
        // "__" stands for a blank in a URL.
        addTable(R"(
        urls                         | C++                           | QML
        Menu/Save                    | Menu::Save                    | menu.save
        Menu Menu/Save               | Menu::Save Menu::self         | menu.save menu.self
        Menu/self                    | Menu::self_                   | menu.self_
        class/signals/EOF/2          | class_::signals_::EOF_::_2    | class_.signals.eOF._2  
        Air-Flow/Zu__spät            | Air_Flow::Zu_sp_t             | air_Flow.zu_sp_t
        Menu menu                    | Menu menu                     | _u004denu _u006denu
        a-b a_b                      | _u0061_u002db _u0061_u005fb   | _u0061_u002db _u0061_u005fb
        self self_                   | _u0073elf _u0073elf_u005f     | _u0073elf _u0073elf_u005f
        TextKey                      | TextKey_                      | textKey
        Menu/                        | Menu::_                       | menu._
        )");
    }
    void namesConstants()
    {
        const QVector<KeyText> texts = textsOf(cell("urls"));
        const auto sorted = [](const QHash<TextKey, QString>& constants) {
            QStringList names;
            for (auto constant = constants.begin(); constant != constants.end(); ++constant)
                names.append(constant.key());
            names.sort();
            return names.join(' ');
        };
        QCOMPARE(sorted(keyHeaderNames(texts)), cell("C++"));
        QCOMPARE(sorted(keySingletonNames(texts)), cell("QML"));
        QCOMPARE(keyHeaderNames(texts).size(), texts.size());
    }

    void generatesTheSameBytes()
    {
        QVector<KeyText> texts = {{"Menu/\"\\\n\u00e4b", "a */ b\nc", "At most\t12"},
                                  {"Menu", "M", ""}};
        const QByteArray header = generateKeyHeader(texts, "App::Keys");
        std::swap(texts[0], texts[1]);
        QCOMPARE(generateKeyHeader(texts, "App::Keys"), header);
        QVERIFY(header.contains("QStringLiteral(\"Menu/\\\"\\\\\\x000a\" u\"\\x00e4\" u\"b\")"));
        QVERIFY(header.contains("/** \"a * / b c\" - At most 12 */\n"));
        QVERIFY(generateKeySingleton(texts).contains("\"Menu/\\\"\\\\\\u000a\\u00e4b\""));
        for (const char* name : {"Keys", "App::Keys", "a1_"})
            QVERIFY2(isNamespaceName(name), name);
        for (const char* name : {"", "1a", "a::", "class", "_A", "a b", "a::;b"})
            QVERIFY2(!isNamespaceName(name), name);
    }

    void findsUses_data()
    {
        addTable(R"x(
        in   | source                                                          | uses
        c++  | t.getText("Menu/Save", QString());                               | Menu/Save
        c++  | t->getText(QStringLiteral("A") , ok, key, true)                  | A
        c++  | t.getShortText(QString::fromUtf8("A/" "B"), "de_DE")             | A/B
        c++  | t.getText(u"A/B"_qs, key)                                        | A/B
        c++  | t.getText(R"(A/B)", key)                                         | A/B
        c++  | t.getText(isOn ? "A/On" : QLatin1String("A/Off"), key)           | A/On A/Off
        c++  | t.getText("A/" + name, key)                                      | A/*
        c++  | t.getText(QStringLiteral("A/%1/B").arg(n), key)                  | A/*
        c++  | t.getText(name + "/A", key)                                      | ?
        c++  | t.getText(urls.at(f(1, 2)), key)                                 | ?
        c++  | messages.getMessage("A", {{"days", 12}}, {})                     | A
        c++  | ReadAllTextsHelper::getAllTextsAsJsonString(t, "A/B")            | A/B
        c++  | parameters.getText("A/B")                                        | A/B
        c++  | helper.getText("de_DE"); helper.getText(language);               |
        c++  | QInputDialog::getText(this, "Title", "Label")                    |
        c++  | QString getText(const QString& textUrl, const QString& key);     |
        c++  | QString T::getText(const QString& textUrl) const {}              |
        c++  | // t.getText("A", key)                                           |
        c++  | /* t.getText("A", key) */ const char c[] = {'"', '"'}; t.getText("B", k) | B
        c++  | int million = 1'000'000; t.getText("A", key);                    | A
        c++  | t.getText(TextKeys::Menu::Save, key)                             | Menu/Save Menu/Save
        c++  | show(App::TextKeys::class_::Air_Flow)                            | class/Air-Flow
        c++  | using Menu::Load;                                                |
        qml  | Label { text: Texts.text("Menu/Save") }                          | Menu/Save
        qml  | Label { text: Texts.text('Menu/' + name) }                       | Menu/*
        qml  | Label { text: Texts.text(`Menu/${name}/x`) }                     | Menu/*
        qml  | DeviceText { url: "A"; args: { "days": 12 } }                    | A
        qml  | DeviceText { url: on ? "A" : "B" }                               | A B
        qml  | DeviceText {\nurl: on\n? "A"\n: "B"\nfont.bold: true }           | A B
        qml  | DeviceText { url: modelData }                                    | ?
        qml  | Image { url: "A" }                                               |
        qml  | Label { text: Texts.text(TextKeys.menu.self) }                   | Menu Menu
        qml  | property var r: [/"/, Texts.text("A"), /"/]                      | A
        json | {"labelTextId": "A/B", "text": "C", "other": {"labelTextId": ""}} | A/B
        json | {"labelTextId": 7, "a": ["labelTextId", "x"]}                    |
        c++  | t.getText(″A                                           |
        c++  | t.getText(                                                       |
        )x");
    }
    void findsUses()
    {
        const UrlNames names = exampleNames();
        QCOMPARE(shownUses(findTextUses(cell("source"), languageOf(cell("in")), names).uses),
                 cell("uses"));
    }

    void keepsPlaces()
    {
        const QString source =
            QString::fromUtf8("// \xf0\x9f\x98\x80\n/* \xf0\x9f\x98\x80 */ f(\"Menu\");\n"
                              "  t.getText(\"A\", k);");
        const SourceUses found = findTextUses(source, SourceLanguage::Cpp, exampleNames());
        QCOMPARE(found.uses.size(), 1);
        QCOMPARE(found.uses.first().place.line, 3);
        QCOMPARE(found.uses.first().place.column, 13);
        QCOMPARE(found.literals, QSet<TextKey>({QString("Menu"), QString("A")}));
    }
};

QTEST_APPLESS_MAIN(SourceKeysTest)

#include "tst_source_keys.moc"
