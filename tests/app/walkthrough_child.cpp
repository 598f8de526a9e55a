// The whole program under a person's hands: it solves a spot of its own making, walks the solution,
// saves it, opens it again and quits. walkthrough_child FILE, where FILE is the name of a project
// that is saved in the working folder. A step that fails is told on the standard error, and the
// process exits with 3.

#include <QColor>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QMetaObject>
#include <QPixmap>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRect>
#include <QScreen>
#include <QString>
#include <QTest>
#include <QVariant>
#include <QWheelEvent>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <utility>

#include "app/application.h"

namespace {

constexpr int deadline = 60000;  // milliseconds; only a fault gets there

using Matches = std::function<bool(const QQuickItem&)>;

/// What a person does with mouse and keyboard, and what they see.
class Hands {
  public:
    explicit Hands(QQuickWindow* window) : window_(window) {}

    [[noreturn]] static void fail(const QString& what) {
        std::fprintf(stderr, "walkthrough: %s\n", qPrintable(what));
        std::_Exit(3);
    }

    static void waitFor(const QString& what, const std::function<bool()>& condition) {
        if (!QTest::qWaitFor(condition, deadline)) {
            fail("waited in vain for " + what);
        }
    }

    /// The first item that is to be seen, in the order of the scene.
    QQuickItem* see(const QString& what, const Matches& matches) const {
        QQuickItem* found = nullptr;
        waitFor(what, [&] { return (found = find(window_->contentItem(), matches)) != nullptr; });
        return found;
    }

    QQuickItem* named(const QString& name) const {
        return see(name, [&](const QQuickItem& item) { return item.objectName() == name; });
    }

    /// By what it says and, where several say so, its type.
    QQuickItem* saying(const QString& text, const QString& type = {}) const {
        return see(text, [&](const QQuickItem& item) {
            return item.property("text") == text && item.isEnabled() &&
                   QString(item.metaObject()->className()).startsWith(type);
        });
    }

    void click(const QQuickItem* item) const {
        QPoint place;
        waitFor("a place to click", [&] {
            // What opens or is laid out comes to rest.
            const QPoint before = std::exchange(place, centre(item));
            QTest::qWait(100);
            const bool isSeen = place.y() > 0 && place.y() < window_->height();
            if (!isSeen) {
                scroll(place.y() > 0 ? -120 : 120);
            }
            return isSeen && place == before;
        });
        QTest::mouseClick(window_, Qt::LeftButton, {}, place);
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(window_, key, modifiers);
    }

    void enter(const QQuickItem* field, const QString& text) const {
        click(field);
        waitFor("the cursor", [&] { return field->hasActiveFocus(); });
        press(Qt::Key_A, Qt::ControlModifier);
        for (const QChar letter : text) {
            QTest::keyClick(window_, letter.toLatin1());
        }
    }

  private:
    static QPoint centre(const QQuickItem* item) {
        return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
    }

    void scroll(int angle) const {
        const QPointF middle(window_->width() / 2.0, window_->height() / 2.0);
        QWheelEvent event(middle, window_->mapToGlobal(middle), {}, {0, angle}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window_, &event);
    }

    static QQuickItem* find(QQuickItem* item, const Matches& matches) {
        if (!item->isVisible()) {
            return nullptr;
        }
        if (item->width() > 0 && matches(*item)) {
            return item;
        }
        for (QQuickItem* const child : item->childItems()) {
            if (QQuickItem* const found = find(child, matches)) {
                return found;
            }
        }
        return nullptr;
    }

    QQuickWindow* window_;
};

/// Solves a river spot.
void solve(const Hands& hands) {
    hands.click(hands.saying("Quick Solve"));
    QQuickItem* const board = hands.see("the board", [](const QQuickItem& item) {
        return QString(item.metaObject()->className()).startsWith("AppShell");
    });
    board->setProperty("boardText", "QsJh2h7c2c");
    for (const auto& [panel, range] :
         {std::pair("oopRange", "AA,KQs,87s"), {"ipRange", "JJ,T9s"}}) {
        hands.enter(hands.named(panel)->findChild<QQuickItem*>("rangeText"), range);
        hands.press(Qt::Key_Return);
    }
    // The memory that it takes is known a moment after the last change.
    QTest::qWait(600);
    hands.waitFor("the way to the solver",
                  [&] { return hands.named("continueToSolve")->isEnabled(); });
    hands.press(Qt::Key_F5);
    const QQuickItem* const results = hands.named("viewResults");
    hands.waitFor("a solution", [&] { return results->isEnabled(); });
    hands.click(results);
}

QQuickItem* box(const Hands& hands, const QString& action, const QString& player) {
    return hands.see(player + " " + action, [&](const QQuickItem& item) {
        return QString(item.metaObject()->className()).startsWith("TreeNode_") &&
               item.property("action") == action && item.property("player") == player;
    });
}

/// To the showdown behind two checks, and back.
void walk(const Hands& hands) {
    hands.click(box(hands, "Check", "OOP"));
    hands.click(box(hands, "Check", "IP"));
    hands.waitFor("the end of the hand",
                  [&] { return box(hands, "Check", "IP")->property("selected").toBool(); });
    hands.click(box(hands, "Check", "OOP"));
    hands.waitFor("the root again",
                  [&] { return !box(hands, "Check", "OOP")->property("selected").toBool(); });
}

void saveAndOpen(const Hands& hands, const QString& file) {
    hands.press(Qt::Key_S, Qt::ControlModifier);
    hands.enter(hands.named("fileNameTextField"), file);
    hands.click(hands.saying("Save", "Button"));
    hands.saying("Saved " + file);
    hands.press(Qt::Key_N, Qt::ControlModifier);
    hands.waitFor("an empty board", [&] { return !hands.named("continueToSolve")->isEnabled(); });
    hands.press(Qt::Key_O, Qt::ControlModifier);
    hands.click(hands.saying(file));
    hands.click(hands.saying("Open", "Button"));
    box(hands, "Check", "OOP");
}

void walkThrough() {
    QWindow* const window = QGuiApplication::topLevelWindows().value(0);
    const Hands hands(qobject_cast<QQuickWindow*>(window));
    hands.waitFor("the window", [&] { return window->isExposed(); });
    // As wide as the Project page would like to be, but for the edges of the screen.
    hands.waitFor("its place", [&] {
        return window->geometry() == QRect(34, 19, 1297, 729) &&
               window->minimumSize() == QSize(1297, 650);
    });
    hands.waitFor("paint on the screen", [&] {
        const QImage corner = window->screen()->grabWindow(0, 34, 19, 1, 1).toImage();
        return corner.pixelColor(0, 0) == QColor("#080B12");
    });
    window->requestActivate();  // no window manager does
    hands.waitFor("the keyboard", [&] { return window->isActive(); });
    solve(hands);
    walk(hands);
    saveAndOpen(hands, QCoreApplication::arguments().at(1));
    window->close();
}

void begin() {
    QMetaObject::invokeMethod(QCoreApplication::instance(), walkThrough, Qt::QueuedConnection);
}
Q_COREAPP_STARTUP_FUNCTION(begin)

}  // namespace

int main(int argc, char* argv[]) {
    return tidewell::runApplication(argc, argv);
}
