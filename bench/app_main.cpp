#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QLoggingCategory>

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName("TidewellBench");
    QLoggingCategory::setFilterRules("*.debug=false\n*.info=false\n");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
