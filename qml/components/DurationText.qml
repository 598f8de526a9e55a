pragma Singleton
import QtQuick

// A time span as people say it.
QtObject {
    // "0.42 s", "7.3 s", "19 s", "2 min 5 s", "3 h 10 min".
    function of(seconds: real): string {
        if (!Number.isFinite(seconds) || seconds < 0) {
            return "—";
        }
        if (seconds < 9.95) {
            //: Seconds
            return qsTr("%1 s").arg(seconds.toLocaleString(Qt.locale(), "f", seconds < 0.995 ? 2 : 1));
        }
        const whole = Math.round(seconds);
        if (whole < 60) {
            return qsTr("%1 s").arg(whole);
        }
        if (whole < 3600) {
            return whole % 60 === 0 ? qsTr("%1 min").arg(whole / 60)
                : qsTr("%1 min %2 s").arg(Math.floor(whole / 60)).arg(whole % 60);
        }
        const minutes = Math.round(whole / 60);
        return minutes % 60 === 0 ? qsTr("%1 h").arg(minutes / 60)
            : qsTr("%1 h %2 min").arg(Math.floor(minutes / 60)).arg(minutes % 60);
    }
}
