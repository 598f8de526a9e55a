#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QSettings>
#include <QTemporaryDir>

// One application for all tests of a process, without a screen, and a settings store that nobody
// else sees.
int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir settings;
    if (!settings.isValid()) {
        return 1;
    }
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    const QGuiApplication application(argc, argv);
    QGuiApplication::setOrganizationName("TidewellTests");
    QGuiApplication::setApplicationName("TidewellTests");
    QGuiApplication::setApplicationVersion("1.0.4");
    return RUN_ALL_TESTS();
}
