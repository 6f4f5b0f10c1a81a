// KeyPalette: the keys of a layout to choose from, in groups and by search, and the modifiers to
// hold while the next key is chosen.
#pragma once

#include "qxcontrols/common/Types.h"

#include <QWidget>

#include <optional>
#include <span>
#include <vector>

class QAbstractButton;
class QTabWidget;
class QToolButton;

namespace qx {
class QXKeyboardLayoutData;
}

namespace qx::views {

class EntryLine;
class HeldKeys;

class KeyPalette : public QWidget {
    Q_OBJECT
public:
    explicit KeyPalette(QWidget* parent = nullptr);

    // Offers the keys of the layout that a sequence can press (1 to 127); none without a layout.
    void ShowKeys(const QXKeyboardLayoutData* layout);
    // No modifier is held any longer.
    void Release();

signals:
    void KeyChosen(int key);
    void HeldChanged(int key, bool isHeld);

protected:
    void changeEvent(QEvent* event) override;

private:
    struct Key {
        Byte code;
        QString caption;
        QString name; // the long caption
    };

    [[nodiscard]] QToolButton* MakeButton(const Key& key);
    [[nodiscard]] QWidget* MakeBlock(std::vector<Key>& keys, std::size_t columns,
                                     std::span<const Byte> block);
    [[nodiscard]] QWidget* MakePage(std::vector<Key> keys, int group);
    [[nodiscard]] static std::optional<int> RankOf(const Key& key, const QString& wanted);
    void ShowTexts();
    void Search(const QString& text);

    HeldKeys* m_held;
    EntryLine* m_search;
    QTabWidget* m_tabs;
    QWidget* m_found; // the page of the search
    std::vector<Key> m_keys;
};

} // namespace qx::views
