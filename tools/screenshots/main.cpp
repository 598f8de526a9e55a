// Runs the tour of screenshots.qml over the program's own objects, with an empty settings store.

#include "tests/qml/surroundings.h"

namespace {

/// The pictures go to the folder of TIDEWELL_SCREENSHOTS, which must exist.
class Studio : public Surroundings {
    Q_OBJECT

  public slots:
    void qmlEngineAvailable(QQmlEngine* engine) {
        Surroundings::qmlEngineAvailable(engine);
        engine->rootContext()->setContextProperty(QStringLiteral("screenshotFolder"),
                                                  qEnvironmentVariable("TIDEWELL_SCREENSHOTS"));
    }
};

}  // namespace

QUICK_TEST_MAIN_WITH_SETUP(tidewell, Studio)

#include "main.moc"
