// SheetMenu: prints the document's key sheet, or exports it as PDF or SVG.
#pragma once

#include "app/Failure.h"
#include "app/Workbench.h"

#include <QObject>

#include <functional>

class QMenu;
class QPrinter;
class QWidget;

namespace qx::sheet {
struct KeySheet;
}

namespace qx::app {

class SheetMenu : public QObject {
    Q_OBJECT
public:
    // The questions to the user; the window's own dialogs by default.
    struct Questions {
        std::function<QString(const QString& suggestion)> file; // empty: cancel
        std::function<bool(QPrinter& printer)> printer;
    };

    SheetMenu(Workbench& workbench, QWidget* window);

    Questions questions;

    // Adds the commands to the menu.
    void Fill(QMenu& menu);
    void Export();
    void Print();

signals:
    void Done(const QString& text);
    void Failed(const Failure& failure);

private:
    [[nodiscard]] sheet::KeySheet Sheet() const;

    Workbench& m_workbench;
};

} // namespace qx::app
