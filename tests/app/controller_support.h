#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QSignalSpy>
#include <QVariantMap>
#include <functional>

#include "app/app_controller.h"

namespace tidewell {

/// Handles events until something holds; false after a minute.
inline bool waitUntil(const std::function<bool()>& holds) {
    const QDeadlineTimer deadline(60000);
    while (!holds() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 50);
    }
    return holds();
}

/// A river spot that solves in milliseconds, as the pages ask for it.
inline QVariantMap riverConfig(int iterations = 60) {
    QVariantMap cfg = {{"board", "Td9c6h6c2s"},
                       {"starting_street", "river"},
                       {"starting_pot", 10.0},
                       {"effective_stack", 40.0},
                       {"oop_range", "TT,87s,KQo"},
                       {"ip_range", "99,AJs,A6s,54s"},
                       {"max_iterations", iterations},
                       {"target_exploitability", 0.0},
                       {"thread_count", 2}};
    for (const char* const seat : {"oop", "ip"}) {
        for (const char* const street : {"flop", "turn", "river"}) {
            const QString prefix = QString("%1_%2_").arg(seat, street);
            cfg[prefix + "bet_sizes"] = "50";
            cfg[prefix + "raise_sizes"] = "60";
        }
    }
    return cfg;
}

/// A turn spot that goes on until it is cancelled.
inline QVariantMap endlessConfig() {
    QVariantMap cfg = riverConfig(1000000);
    cfg["board"] = "Td9c6h6c";
    cfg["starting_street"] = "turn";
    return cfg;
}

/// A flop spot of some hundred megabytes.
inline QVariantMap wideConfig() {
    QVariantMap cfg = endlessConfig();
    cfg["starting_street"] = "flop";
    cfg["board"] = "Td9c6h";
    cfg["oop_range"] = cfg["ip_range"] = "22+,A2s+,K2s+,Q2s+,J2s+,A2o+,K5o+";
    return cfg;
}

inline void solve(AppController& controller, const QVariantMap& cfg) {
    controller.startSolveWithConfig(cfg);
    ASSERT_TRUE(controller.running()) << controller.statusText().toStdString();
    ASSERT_TRUE(waitUntil([&] { return !controller.running(); }));
}

}  // namespace tidewell
