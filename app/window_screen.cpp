#include "app/window_screen.h"

#include <QRectF>
#include <QScreen>
#include <QVariant>
#include <QWindow>

namespace tidewell {

WindowScreen::WindowScreen(QWindow* window) : QObject(window), window_(window) {
    connect(window, &QWindow::screenChanged, this, &WindowScreen::follow);
    follow(window->screen());
}

void WindowScreen::follow(QScreen* screen) {
    disconnect(geometryChange_);
    if (screen != nullptr) {
        geometryChange_ =
            connect(screen, &QScreen::availableGeometryChanged, this, &WindowScreen::update);
        update();
    }
}

void WindowScreen::update() {
    window_->setProperty("availableGeometry", QRectF(window_->screen()->availableGeometry()));
}

}  // namespace tidewell
