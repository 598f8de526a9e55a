#include "app/files/shared_store.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QStringList>
#include <csignal>
#include <vector>

#include "app/files/recent_files.h"
#include "app/statistics.h"

namespace {

using tidewell::changeStore;

const QString key = QStringLiteral("sharedStoreTest/list");

void append(const QString& entry) {
    changeStore([&](QSettings& settings) {
        settings.setValue(key, settings.value(key).toStringList() << entry);
    });
}

// Windows are processes: two that write as fast as they can, and one that dies in the middle of it.
TEST(SharedStore, LosesNothingToOtherProcesses) {
    QSettings().clear();
    constexpr int each = 30;
    std::vector<pid_t> children;
    for (const char* const name : {"a", "b", "killed"}) {
        children.push_back(fork());
        if (children.back() != 0) {
            continue;
        }
        for (int i = 0; i < each; ++i) {
            append(name + QString::number(i));
            tidewell::Statistics().recordPlayVsSolutionHand(false, 0);
            if (*name == 'k') {
                changeStore([](QSettings& settings) {
                    settings.setValue(key, QStringList());
                    raise(SIGKILL);
                });
            }
        }
        _exit(0);
    }
    for (const pid_t child : children) {
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(WIFSIGNALED(status), child == children.back());
    }
    append("parent");
    QStringList list = QSettings().value(key).toStringList();
    EXPECT_EQ(list.size(), 2 * each + 2);
    EXPECT_EQ(list.removeDuplicates(), 0);
    EXPECT_EQ(tidewell::Statistics().playVsSolutionStats()["totalHands"], 2 * each + 1);
    QSettings().clear();
}

TEST(SharedStore, WindowsShareTheirRecentFiles) {
    QSettings().clear();
    tidewell::RecentFiles first;
    tidewell::RecentFiles second;
    first.add(QUrl("file:///gone/1"));
    second.add(QUrl("file:///gone/2"));
    first.add(QUrl("file:///gone/3"));
    second.remove(QUrl("file:///gone/2"));
    EXPECT_EQ(second.count(), 2);
    first.refresh();
    EXPECT_EQ(first.data(first.index(0, 0), tidewell::RecentFiles::UrlRole),
              QUrl("file:///gone/3"));
    EXPECT_EQ(first.count(), 2);
    QSettings().clear();
}

}  // namespace
