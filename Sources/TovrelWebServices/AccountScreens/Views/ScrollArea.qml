import QtQuick
import Tovrel.AccountScreens

/// Scrolls what does not fit, and whatever gets the keyboard's focus into view.
Flickable {
    id: area

    readonly property Item focused: Window.activeFocusItem

    contentWidth: width
    boundsBehavior: Flickable.StopAtBounds
    interactive: contentHeight > height
    clip: interactive
    pixelAligned: true

    onFocusedChanged: reveal(focused)
    onHeightChanged: reveal(focused)

    function holds(item: Item): bool {
        for (let i = item; i; i = i.parent) {
            if (i === area.contentItem) {
                return true;
            }
        }
        return false;
    }

    function reveal(item: Item) {
        if (!item || !holds(item)) {
            return;
        }
        const top = item.mapToItem(contentItem, 0, 0).y - Theme.spacing;
        const bottom = top + item.height + 2 * Theme.spacing;
        if (top < contentY) {
            scrollTo(top);
        } else if (bottom > contentY + height) {
            scrollTo(bottom - height);
        }
    }

    function scrollTo(position: real) {
        contentY = Math.max(0, Math.min(position, contentHeight - height));
    }

    /// Moves for a key, and says whether the key was one for moving.
    function scrollBy(key: int): bool {
        switch (key) {
        case Qt.Key_Up:
            scrollTo(contentY - 48);
            return true;
        case Qt.Key_Down:
            scrollTo(contentY + 48);
            return true;
        case Qt.Key_PageUp:
            scrollTo(contentY - height);
            return true;
        case Qt.Key_PageDown:
            scrollTo(contentY + height);
            return true;
        case Qt.Key_Home:
            scrollTo(0);
            return true;
        case Qt.Key_End:
            scrollTo(contentHeight);
            return true;
        }
        return false;
    }

    Rectangle {
        parent: area
        visible: area.interactive
        x: Theme.isRightToLeft ? 3 : area.width - width - 3
        y: 3 + (area.height - 6) * area.visibleArea.yPosition
        width: 3
        height: (area.height - 6) * area.visibleArea.heightRatio
        radius: 1.5
        color: Theme.scrollMark
    }
}
