#include "app/graphics_backend.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>
#include <QSGRendererInterface>

namespace tidewell {
namespace {

/// The renderer that OpenGL names; empty without OpenGL.
QByteArray openGlRenderer() {
    QOpenGLContext context;
    QOffscreenSurface surface;
    surface.create();
    if (!context.create() || !context.makeCurrent(&surface)) {
        return {};
    }
    const auto* const name =
        reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER));
    const QByteArray renderer(name);
    context.doneCurrent();
    return renderer;
}

bool isDrawnByProcessor(const QByteArray& renderer) {
    for (const char* const name : {"llvmpipe", "softpipe", "SwiftShader"}) {
        if (renderer.contains(name)) {
            return true;
        }
    }
    return false;
}

}  // namespace

void chooseGraphicsBackend() {
    if (qEnvironmentVariableIsSet("QT_QUICK_BACKEND") ||
        QGuiApplication::platformName() == QLatin1String("offscreen")) {
        return;
    }
    const QByteArray renderer = openGlRenderer();
    if (renderer.isEmpty() || isDrawnByProcessor(renderer)) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
}

}  // namespace tidewell
