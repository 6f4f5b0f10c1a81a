// ModuleCards: a card for each module that the keyboard has, with a summary of its settings; while
// no keyboard is connected, for each that the document has settings for.
#pragma once

#include <QWidget>

#include <string>
#include <vector>

class QCommandLinkButton;
class QGridLayout;

namespace qx::app {

class Workbench;

class ModuleCards : public QWidget {
    Q_OBJECT
public:
    explicit ModuleCards(Workbench& workbench, QWidget* parent = nullptr);

signals:
    void Chosen(const QString& sectionKey);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    struct Card {
        std::string sectionKey;
        QWidget* frame;
        QCommandLinkButton* button;
    };

    void ShowSummaries();
    void Arrange();

    Workbench& m_workbench;
    QGridLayout* m_grid;
    std::vector<Card> m_cards;
};

} // namespace qx::app
