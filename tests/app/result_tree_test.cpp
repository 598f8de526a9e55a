#include "app/results/result_tree.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <limits>

#include "app/files/json_writer.h"
#include "tests/app/solved_spot.h"

namespace tidewell {
namespace {

QVariantMap with(QVariantMap map, const QString& key, const QVariant& value) {
    map.insert(key, value);
    return map;
}

QVariantMap without(QVariantMap map, const QString& key) {
    map.remove(key);
    return map;
}

const QVariantMap plainMeta = {
    {"nodeType", "decision"}, {"chanceDeal", ""},   {"player", "IP"},     {"pot", 10.25},
    {"effectiveStack", 40.5}, {"investedOop", 0LL}, {"investedIp", 3.01}, {"hasChildren", true}};
const QVariantMap plainAction = {
    {"name", "Bet 50%"}, {"actionType", "bet 50%"}, {"frequency", 0.25}, {"childIndex", 7LL}};

/// The entry itself, and with each of its members missing, of another kind or out of range.
QVariantList variations(const QVariantMap& plain) {
    const auto values = QVariantList()
                        << QVariant() << QVariant::fromValue(nullptr) << "x" << true
                        << QVariant(QVariantList{1}) << QVariantMap{{"a", 1}} << 0 << -0.0 << 0.005
                        << 0.1 << -1 << 1.5 << 21474836.47 << 21474836.48 << -21474836.48
                        << 2147483647LL << 2147483648LL << 1e300
                        << std::numeric_limits<qlonglong>::max()
                        << std::numeric_limits<double>::infinity();
    QVariantList entries = {plain, with(plain, "more", 1), QVariantMap()};
    for (const QString& key : plain.keys()) {
        entries.append(without(plain, key));
        entries.append(with(without(plain, key), "more", 1));
        for (const QVariant& value : values) {
            entries.append(with(plain, key, value));
        }
    }
    return entries;
}

QJsonDocument written(const ResultTree& tree) {
    QByteArray text;
    JsonWriter json([&](std::string_view bytes) {
        text.append(bytes.data(), static_cast<qsizetype>(bytes.size()));
    });
    json.beginArray();
    for (int node = 0; node < tree.nodeCount(); ++node) {
        tree.writeMeta(node, json);
    }
    for (int node = 0; node < tree.actionListCount(); ++node) {
        tree.writeActions(node, json);
    }
    json.endArray();
    EXPECT_TRUE(json.finish());
    return QJsonDocument::fromJson(text);
}

TEST(ResultTree, TellsASolvedTreeInChips) {
    QVariantMap cfg = riverConfig(2);
    cfg["board"] = "Td9c6h6c";
    cfg["starting_street"] = "turn";
    const SolvedSpot spot(cfg);
    const ResultTree tree = spot.tree();
    ASSERT_EQ(tree.nodeCount(), static_cast<int>(spot.nodes().size()));
    ASSERT_EQ(tree.actionListCount(), tree.nodeCount());
    const auto text = [](std::string_view view) {
        return QString::fromUtf8(view.data(), static_cast<qsizetype>(view.size()));
    };
    for (int i = 0; i < tree.nodeCount(); ++i) {
        const auto node = spot.nodes().node(static_cast<std::size_t>(i));
        const QVariantMap expected = {{"nodeType", text(node.node_type)},
                                      {"chanceDeal", text(node.chance_deal)},
                                      {"player", text(node.player)},
                                      {"pot", node.pot / 100.0},
                                      {"effectiveStack", 40.0},
                                      {"investedOop", node.invested_oop / 100.0},
                                      {"investedIp", node.invested_ip / 100.0},
                                      {"hasChildren", node.has_children}};
        ASSERT_EQ(tree.meta(i), expected);
        QVariantList actions;
        for (const auto& action : spot.nodes().actions(static_cast<std::size_t>(i))) {
            actions.append(QVariantMap{{"name", text(action.name)},
                                       {"actionType", text(action.action_type)},
                                       {"frequency", static_cast<double>(action.frequency)},
                                       {"childIndex", static_cast<int>(action.child_index)}});
        }
        ASSERT_EQ(tree.actions(i), actions);
        ASSERT_EQ(tree.actionCount(i), actions.size());
    }
    for (const int outside : {-1, tree.nodeCount(), std::numeric_limits<int>::max()}) {
        EXPECT_TRUE(tree.meta(outside).isEmpty());
        EXPECT_TRUE(tree.actions(outside).isEmpty());
        EXPECT_EQ(tree.actionCount(outside), 0);
    }
}

TEST(ResultTree, TellsEveryEntryAsItWasGiven) {
    const QVariantList metas = variations(plainMeta);
    QVariantList lists = {QVariantList()};
    for (const QVariant& action : variations(plainAction) + QVariantList{5, "x", QVariant()}) {
        lists.append(QVariant(QVariantList{action}));
        lists.append(QVariant(QVariantList{plainAction, action, plainAction}));
    }
    ResultTree::Builder builder;
    builder.beginMeta();
    for (const QVariant& entry : metas) {
        builder.addMeta(entry.toMap());
    }
    builder.beginActions();
    for (const QVariant& entry : lists) {
        builder.addActions(entry.toList());
    }
    const ResultTree tree = builder.finish();
    ASSERT_EQ(tree.nodeCount(), metas.size());
    ASSERT_EQ(tree.actionListCount(), lists.size());
    for (int i = 0; i < tree.nodeCount(); ++i) {
        EXPECT_EQ(tree.meta(i), metas[i].toMap()) << i;
    }
    for (int i = 0; i < tree.actionListCount(); ++i) {
        EXPECT_EQ(tree.actions(i), lists[i].toList()) << i;
        EXPECT_EQ(tree.actionCount(i), lists[i].toList().size()) << i;
    }
    EXPECT_EQ(written(tree), QJsonDocument::fromVariant(metas + lists));
}

TEST(ResultTree, ListsThatBeginAgainReplaceTheFormer) {
    ResultTree::Builder builder;
    builder.addMeta(with(plainMeta, "more", 1));
    builder.addActions({with(plainAction, "more", 1)});
    builder.beginMeta();
    builder.beginActions();
    builder.addMeta(plainMeta);
    builder.addActions({plainAction});
    EXPECT_EQ(written(builder.finish()),
              QJsonDocument::fromVariant(QVariantList{plainMeta, QVariantList{plainAction}}));
    EXPECT_EQ(builder.finish().nodeCount(), 0);
}

}  // namespace
}  // namespace tidewell
