#include <gtest/gtest.h>

#include <QGuiApplication>

#include "tests/temporary_folder.h"

// One application for all tests of a process, without a screen.
int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    const tidewell_tests::TemporaryHome home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QGuiApplication::setOrganizationName("TidewellTests");
    QGuiApplication::setApplicationName("TidewellTests");
    QGuiApplication::setApplicationVersion("1.0.4");
    return RUN_ALL_TESTS();
}
