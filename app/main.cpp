#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char* argv[]) {
    const QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.load(QUrl("qrc:/Tidewell/Main.qml"));
    return engine.rootObjects().isEmpty() ? -1 : QGuiApplication::exec();
}
