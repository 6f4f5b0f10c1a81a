// Discard: the question before a dialog that the user leaves in passing loses what was done in it.
#pragma once

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace qx::views {

class Discard {
    Q_DECLARE_TR_FUNCTIONS(Discard)
public:
    // Whether the user wants to lose the changes; asked only when there are any, and no by default.
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
