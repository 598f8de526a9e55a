#pragma once

#include <QMetaObject>
#include <QObject>

class QScreen;
class QWindow;

namespace tidewell {

/// Keeps a window's property "availableGeometry" at what its screen leaves to windows: a rectangle
/// in pixels of the virtual desktop. QML itself only tells that of all screens together. Belongs
/// to the window.
class WindowScreen : public QObject {
  public:
    explicit WindowScreen(QWindow* window);

  private:
    void follow(QScreen* screen);
    void update();

    QWindow* window_;
    QMetaObject::Connection geometryChange_;
};

}  // namespace tidewell
