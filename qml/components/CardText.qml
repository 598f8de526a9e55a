pragma Singleton

import QtQuick

// Cards as they are drawn and as they are spoken. Ranks are "AKQJT98765432", suits "shdc".
QtObject {
    function symbol(suit: string): string {
        const symbols = {"s": "♠", "h": "♥", "d": "♦", "c": "♣"};
        return symbols[suit.toLowerCase()] ?? "";
    }

    // Such as "Ace of spades"; "" for what is no card.
    function spoken(rank: string, suit: string): string {
        const rankWord = _rankWord(rank);
        const suitWord = _suitWord(suit.toLowerCase());
        //: A playing card: %1 is its rank, %2 its suit
        return rankWord && suitWord ? qsTr("%1 of %2").arg(rankWord).arg(suitWord) : "";
    }

    function _rankWord(rank: string): string {
        switch (rank) {
        case "A":
            return qsTr("Ace");
        case "K":
            return qsTr("King");
        case "Q":
            return qsTr("Queen");
        case "J":
            return qsTr("Jack");
        case "T":
            return qsTr("Ten");
        default:
            return /^[2-9]$/.test(rank) ? rank : "";
        }
    }

    function _suitWord(suit: string): string {
        switch (suit) {
        case "s":
            return qsTr("spades");
        case "h":
            return qsTr("hearts");
        case "d":
            return qsTr("diamonds");
        case "c":
            return qsTr("clubs");
        default:
            return "";
        }
    }
}
