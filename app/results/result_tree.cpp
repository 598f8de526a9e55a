#include "app/results/result_tree.h"

#include <utility>

#include "app/results/variant_map.h"

namespace tidewell {

ResultTree::ResultTree(std::shared_ptr<const kestrel_app::TreeSnapshot> snapshot,
                       double effectiveStack)
    : snapshot_(std::move(snapshot)), effectiveStack_(effectiveStack) {}

int ResultTree::nodeCount() const {
    return snapshot_ ? static_cast<int>(snapshot_->size()) : 0;
}

QVariantMap ResultTree::meta(int node) const {
    return has(node) ? variantMap(snapshot_->node(static_cast<std::size_t>(node)), effectiveStack_)
                     : QVariantMap();
}

QVariantList ResultTree::actions(int node) const {
    QVariantList list;
    if (has(node)) {
        for (const auto& action : snapshot_->actions(static_cast<std::size_t>(node))) {
            list.append(variantMap(action));
        }
    }
    return list;
}

int ResultTree::actionCount(int node) const {
    return has(node) ? static_cast<int>(snapshot_->action_count(static_cast<std::size_t>(node)))
                     : 0;
}

}  // namespace tidewell
