#include "app/language_manager.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDataStream>
#include <QLocale>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSettings>
#include <QTemporaryDir>
#include <memory>
#include <string>
#include <tuple>

#include "tests/app/files.h"

namespace {

/// A compiled catalogue of one text: context "HandBuckets", source "quads". Its two sections are
/// the sorted pairs of hash (of the source, ELF's) and offset, and the messages.
QByteArray catalogueOf(const QString& translation) {
    const QByteArray source("quads");
    quint32 hash = 0;
    for (const char character : source) {
        hash = (hash << 4) + static_cast<quint8>(character);
        const quint32 high = hash & 0xF0000000U;
        hash = (hash ^ (high >> 24)) & ~high;
    }

    QByteArray messages;
    QDataStream message(&messages, QIODevice::WriteOnly);
    message << quint8{3} << translation;  // as UTF-16, big endian, after its length in bytes
    message << quint8{6} << source << quint8{7} << QByteArray("HandBuckets") << quint8{1};

    const QByteArray magic = QByteArray::fromHex("3cb86418caef9c95cd211cbf60a1bddd");
    QByteArray file = magic;
    QDataStream sections(&file, QIODevice::Append);
    sections << quint8{0x42} << quint32{8} << hash << quint32{0} << quint8{0x69} << messages;
    return file;
}

std::string shownQuads() {
    return QCoreApplication::translate("HandBuckets", "quads").toStdString();
}

/// A directory of catalogues, and a process as it was before any manager.
class LanguageManagerTest : public testing::Test {
  protected:
    void SetUp() override {
        QSettings().clear();
        ASSERT_TRUE(directory_.isValid());
        addCatalogue("de", catalogueOf("Vierling"));
        addCatalogue("pt_BR", catalogueOf("Quadra"));
        addCatalogue("fr", "no catalogue");
    }

    void TearDown() override {
        start()->setLanguage("en");
        QLocale::setDefault(QLocale::system());
        QSettings().clear();
    }

    void addCatalogue(const QString& name, const QByteArray& content) {
        writeFile(directory_.filePath("kestrel_" + name + ".qm"), content);
    }

    std::unique_ptr<LanguageManager> start(QQmlEngine* engine = nullptr) {
        return std::make_unique<LanguageManager>(engine, nullptr, directory_.path());
    }

  private:
    QTemporaryDir directory_;
};

TEST_F(LanguageManagerTest, CodesAreNormalized) {
    for (const QVariant& code :
         QVariantList{QVariant(), " auto\n", "System", " de ", QStringList{"de", "fr"}}) {
        const QString language = code == " de " ? "de" : "system";
        QSettings().setValue("ui/language", code);
        EXPECT_EQ(start()->currentLanguage(), language) << code.toString().toStdString();
        EXPECT_EQ(QSettings().value("ui/language"), code) << "a start stores nothing";
        start()->setLanguage("xx");
        start()->setLanguage(code.toString());
        EXPECT_EQ(QSettings().value("ui/language"), language);
    }
}

// And the catalogue closest to it serves.
TEST_F(LanguageManagerTest, EachLanguageReplacesTheOneBefore) {
    addCatalogue("en", catalogueOf("not for use"));
    addCatalogue("es", catalogueOf("es"));
    addCatalogue("es_ES", catalogueOf("es_ES"));
    const std::tuple<const char*, std::string, QString> steps[] = {
        {"de", "Vierling", "0,5"},    {"pt_BR", "Quadra", "0,5"}, {"en", "quads", "0.5"},
        {"xx", "quads", "0.5"},       {"pt", "Quadra", "0,5"},    {"fr", "quads", "0,5"},
        {"de_AT", "Vierling", "0,5"}, {"es_ES", "es_ES", "0,5"}};
    const auto manager = start();
    for (const auto& [code, quads, half] : steps) {
        manager->setLanguage(code);
        EXPECT_EQ(shownQuads(), quads) << code;
        EXPECT_EQ(QLocale().toString(0.5), half) << code;
        EXPECT_EQ(start()->currentLanguage(), code) << "at the next start";
        EXPECT_EQ(shownQuads(), quads) << code;
    }
    addCatalogue(QLocale::system().name(), catalogueOf("of the system"));
    manager->setLanguage("system");
    EXPECT_EQ(shownQuads(), "of the system");
    EXPECT_EQ(QLocale(), QLocale::system());
    manager->setLanguage("en");
    QSettings().clear();
    EXPECT_EQ(start()->currentLanguage(), "system");
    EXPECT_EQ(shownQuads(), "of the system");
}

TEST_F(LanguageManagerTest, BindingsFollowTheLanguage) {
    QQmlEngine engine;
    const auto manager = start(&engine);
    QQmlComponent component(&engine);
    component.setData(
        "import QtQuick\n"
        "QtObject {\n"
        "    property string quads: qsTr('quads')\n"
        "    function half() { return (0.5).toLocaleString(Qt.locale(), 'f', 1) }\n"
        "}",
        QUrl("file:///HandBuckets.qml"));  // the name is the context of qsTr
    const std::unique_ptr<QObject> object(component.create());
    ASSERT_TRUE(object) << component.errorString().toStdString();
    for (const char* const code : {"en", "de"}) {
        manager->setLanguage(code);
        EXPECT_EQ(object->property("quads").toString().toStdString(), shownQuads());
        QVariant half;
        ASSERT_TRUE(QMetaObject::invokeMethod(object.get(), "half", Q_RETURN_ARG(QVariant, half)));
        EXPECT_EQ(half, QLocale(code).toString(0.5));
    }
}

}  // namespace
