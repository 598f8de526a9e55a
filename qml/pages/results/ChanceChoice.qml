import QtQuick
import "../../logic/suit_map.mjs" as Suits

// The choice of a card at a chance node, while it is being made.
QtObject {
    id: choice

    required property NodeReader nodes
    required property TreeWalk walk

    // The card takes the place of another one, and what came after that is cut off.
    property bool replacing: false

    // Of the chance node, -1 while no choice is open.
    property int levelIndex: -1
    property int nodeIndex: -1
    property var actions: []
    // Index of the action by card as shown.
    property var indexByCard: ({})
    property var availableIndices: []
    // Before the choice.
    property string boardText: ""

    readonly property string title: nodes.meta(nodeIndex).chanceDeal === "river"
        ? qsTr("Choose River Card") : qsTr("Choose Turn Card")

    // By another card.
    signal replaced

    function open(level: int, node: int): void {
        nodeIndex = node;
        actions = nodes.actions(node);
        boardText = walk.boardBefore(level);
        indexByCard = walk.dealableAt(level);
        availableIndices = Object.values(indexByCard);
        levelIndex = level;
    }

    function close(): void {
        levelIndex = -1;
        actions = [];
    }

    // -1 for a card that cannot be dealt.
    function indexFor(card: string): int {
        return Suits.indexForCard(card, indexByCard, boardText);
    }

    // `card` is what the user saw; empty for the action's own card.
    function choose(action: int, card: string): void {
        if (levelIndex < 0 || action < 0 || action >= actions.length) {
            return;
        }
        const own = Object.keys(indexByCard).find(shown => indexByCard[shown] === action);
        walk.showCard(nodeIndex, card || (own ?? actions[action].name));
        if (replacing) {
            walk.goTo(levelIndex);
            walk.follow(action);
            replaced();
        } else {
            walk.selectInstead(levelIndex, action);
        }
        close();
    }

    function chooseRandomly(): void {
        if (availableIndices.length > 0) {
            choose(availableIndices[Math.floor(Math.random() * availableIndices.length)], "");
        }
    }
}
