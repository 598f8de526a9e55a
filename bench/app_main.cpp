#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QLoggingCategory>
#include <QQuickStyle>
#include <QSettings>
#include <QTemporaryDir>

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickStyle::setStyle("Basic");
    const QGuiApplication application(argc, argv);
    QGuiApplication::setOrganizationName("TidewellBench");
    QGuiApplication::setApplicationName("TidewellBench");
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    QLoggingCategory::setFilterRules("*.debug=false\n*.info=false\n");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
