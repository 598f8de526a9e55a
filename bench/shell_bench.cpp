// How long the window's content takes to stand: from the engine that knows no document yet to the
// shell with everything in it that the first page shows. Nothing is drawn.

#include <benchmark/benchmark.h>

#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QUrl>
#include <cstdlib>
#include <memory>

#include "app/app_controller.h"
#include "app/language_manager.h"
#include "app/update/update_manager.h"

namespace {

/// The engine as the program sets it up, with the objects that the documents know.
class Surroundings {
  public:
    Surroundings() : language_(&engine_) {
        engine_.addImportPath(QStringLiteral("qrc:/"));
        QQmlContext* const context = engine_.rootContext();
        context->setContextProperty(QStringLiteral("languageManager"), &language_);
        context->setContextProperty(QStringLiteral("appController"), &controller_);
        context->setContextProperty(QStringLiteral("updates"), &updates_);
    }

    std::unique_ptr<QObject> create(QQmlComponent& component) {
        std::unique_ptr<QObject> object(component.createWithInitialProperties(
            {{"controller", QVariant::fromValue<QObject*>(&controller_)},
             {"width", 1280},
             {"height", 720}}));
        if (object == nullptr) {
            qCritical().noquote() << component.errorString();
            std::abort();
        }
        return object;
    }

    QQmlEngine& engine() { return engine_; }

  private:
    QQmlEngine engine_;
    LanguageManager language_;
    AppController controller_;
    UpdateManager updates_;
};

const QUrl shell(QStringLiteral("qrc:/Tidewell/AppShell.qml"));

/// As at a start: the documents are read, and the shell is created from them.
void shellFromTheStart(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto surroundings = std::make_unique<Surroundings>();
        state.ResumeTiming();
        QQmlComponent component(&surroundings->engine(), shell);
        std::unique_ptr<QObject> object = surroundings->create(component);
        state.PauseTiming();
        object.reset();
        surroundings.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(shellFromTheStart)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

/// The objects alone: the documents have been read.
void shellOnceMore(benchmark::State& state) {
    Surroundings surroundings;
    QQmlComponent component(&surroundings.engine(), shell);
    surroundings.create(component);
    for (auto _ : state) {
        std::unique_ptr<QObject> object = surroundings.create(component);
        state.PauseTiming();
        object.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(shellOnceMore)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

}  // namespace
