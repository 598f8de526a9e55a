import QtQuick
import "../../logic/card_text.mjs" as Cards
import "../../logic/suit_map.mjs" as Suits

// The way from the root of the tree to the current node. It always has at least the root; its last
// level is the current node.
QtObject {
    id: walk

    required property NodeReader nodes
    // The board before any card is dealt on the way.
    property string boardText: ""

    // Rows of `nodeIndex` and `selectedActionIndex`, the latter -1 while nothing is chosen there.
    readonly property ListModel levels: ListModel {}
    property int currentNodeIndex: 0
    property string selectedPlayer: "OOP"
    // `boardText` and the cards dealt on the way, as the user chose them.
    property string boardWithDeals: ""
    // From the suits of cards as the tree keeps them to those that are shown.
    property var suits: Suits.suitMap([])
    // The action that ended the hand, null while it goes on.
    property var ending: null
    // The card the user clicked, by index of the chance node. Only that of a decided level counts.
    property var shownCards: ({})

    function reset(): void {
        levels.clear();
        levels.append({nodeIndex: 0, selectedActionIndex: -1});
        _arrive();
    }

    // Only where something is still to be chosen. A hand that ends there stays on its last decision.
    function select(level: int, action: int): void {
        if (level !== levels.count - 1 || levels.get(level).selectedActionIndex >= 0) {
            return;
        }
        _take(action, false);
    }

    // The same on the last level, to the end of a hand too: it gets a level of its own.
    function follow(action: int): void {
        _take(action, true);
    }

    // Back to a level, with all its actions to choose from.
    function goTo(level: int): void {
        if (level < 0 || level >= levels.count) {
            return;
        }
        if (level + 1 < levels.count) {
            levels.remove(level + 1, levels.count - level - 1);
        }
        levels.setProperty(level, "selectedActionIndex", -1);
        _arrive();
    }

    // Another choice instead of the last one, or instead of one that was left behind.
    function selectInstead(level: int, action: int): void {
        goTo(level);
        select(level, action);
    }

    // Index of the action by card as shown, of those that can be dealt at a level.
    function dealableAt(level: int): var {
        const row = levels.get(level);
        const names = row ? nodes.actions(row.nodeIndex).map(action => action.name) : [];
        return Suits.dealableCards(names, Suits.suitMap(dealsBefore(level)), boardBefore(level));
    }

    // One choice less.
    function back(): void {
        const last = levels.count - 1;
        goTo(levels.get(last).selectedActionIndex >= 0 ? last : last - 1);
    }

    function showCard(node: int, card: string): void {
        const cards = Object.assign({}, shownCards);
        cards[String(node)] = card;
        shownCards = cards;
    }

    // Of the decided levels before a level that deal a card: pairs of the card as the tree keeps it and
    // as it is shown.
    function dealsBefore(level: int): var {
        const deals = [];
        for (let i = 0; i < Math.min(level, levels.count); ++i) {
            const deal = dealAt(i);
            if (deal !== null) {
                deals.push(deal);
            }
        }
        return deals;
    }

    // Null where no card is dealt.
    function dealAt(level: int): var {
        // The list gives nothing for a row that has just gone.
        const row = levels.get(level);
        const action = row ? nodes.actions(row.nodeIndex)[row.selectedActionIndex] : undefined;
        if (!action || action.name.length !== 2) {
            return null;
        }
        const isDeal = nodes.meta(row.nodeIndex).nodeType === "chance";
        const chosen = isDeal ? shownCards[row.nodeIndex] : undefined;
        return {kept: action.name, shown: chosen ?? action.name};
    }

    function boardBefore(level: int): string {
        const cards = dealsBefore(level).map(deal => Cards.normalizedCard(deal.shown));
        return boardText.replace(/\s/g, "") + cards.join("");
    }

    function updateBoard(): void {
        suits = Suits.suitMap(dealsBefore(levels.count));
        boardWithDeals = boardBefore(levels.count);
    }

    function _take(action: int, toTheEnd: bool): void {
        const level = levels.count - 1;
        const actions = nodes.actions(levels.get(level).nodeIndex);
        if (action < 0 || action >= actions.length) {
            return;
        }
        levels.setProperty(level, "selectedActionIndex", action);
        const child = actions[action].childIndex;
        // The root is nobody's child: 0 stands for none.
        if (child > 0 && child < nodes.nodeCount()
                && (toTheEnd || nodes.meta(child).nodeType !== "terminal")) {
            levels.append({nodeIndex: child, selectedActionIndex: -1});
        }
        _arrive();
    }

    function _arrive(): void {
        const node = levels.get(levels.count - 1).nodeIndex;
        const chosen = nodes.actions(node)[levels.get(levels.count - 1).selectedActionIndex];
        ending = chosen ?? null;
        selectedPlayer = nodes.meta(node).player || selectedPlayer;
        updateBoard();
        currentNodeIndex = node;
    }

    onBoardTextChanged: updateBoard()
}
