// Discard: the question when closing a dialog other than by its buttons would lose changes.
#pragma once

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace qx::views {

class Discard {
    Q_DECLARE_TR_FUNCTIONS(Discard)
public:
    // Whether the user agrees to lose the changes; asked only if there are any, with No as default.
    [[nodiscard]] static bool IsAgreed(QWidget* dialog, bool isChanged) {
        if (!isChanged)
            return true;
        QMessageBox box(QMessageBox::Question, dialog->windowTitle(), tr("Discard the changes?"),
                        QMessageBox::NoButton, dialog);
        box.setObjectName(QStringLiteral("discardQuestion"));
        const QPushButton* discard = box.addButton(tr("&Discard"), QMessageBox::DestructiveRole);
        QPushButton* keep = box.addButton(tr("&Keep editing"), QMessageBox::RejectRole);
        box.setDefaultButton(keep);
        box.setEscapeButton(keep);
        box.exec();
        return box.clickedButton() == discard;
    }
};

} // namespace qx::views
