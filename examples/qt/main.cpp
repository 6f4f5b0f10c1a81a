// A Qt host whose form was made in Qt Designer: edits the readers of the connected keyboard.
//
// usage: till-editor DRIVER    (the keyboard's driver library, such as TANDORQX.DLL)
#include "ui_Till.h"

#include "qxcontrols/device/DriverLibrary.h"
#include "qxcontrols/device/QXKeyboardAccess.h"

#include <QApplication>
#include <QMessageBox>

#include <array>
#include <stdexcept>

namespace {

class Till : public QWidget {
public:
    explicit Till(qx::QXKeyboardAccess& keyboard) : m_keyboard(keyboard) {
        m_form.setupUi(this);
        m_controls = {&m_form.magnetCard->control, &m_form.barcode->control};
        for (qx::ModuleControl* control : m_controls)
            control->SetKeyboard(&keyboard);
        connect(m_form.read, &QPushButton::clicked, this, &Till::Read);
        connect(m_form.write, &QPushButton::clicked, this, &Till::Write);
        setWindowTitle(QString::fromStdString(keyboard.Keyboard()));
        Read();
    }

private:
    void Read() { // keyboard to PC
        m_keyboard.DataTransferPrepare();
        for (qx::ModuleControl* control : m_controls)
            control->PrepareDataUpload(true);
        const qx::Long status = m_keyboard.Upload();
        for (qx::ModuleControl* control : m_controls)
            if (status == 0)
                control->DataUpload(true);
        m_keyboard.DataTransferFixUp();
        Show(tr("Read"), status);
    }
    void Write() { // PC to keyboard
        m_keyboard.DataTransferPrepare();
        for (qx::ModuleControl* control : m_controls)
            control->DataDownload(true);
        for (qx::ModuleControl* control : m_controls)
            control->PrepareDataDownload(true);
        const qx::Long status = m_keyboard.Download();
        m_keyboard.DataTransferFixUp();
        Show(tr("Written"), status);
    }
    void Show(const QString& done, qx::Long status) {
        m_form.state->setText(status == 0 ? done : tr("The driver reports %1").arg(status));
    }

    Ui::Till m_form;
    qx::QXKeyboardAccess& m_keyboard;
    std::array<qx::ModuleControl*, 2> m_controls{};
};

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    try {
        if (argc != 2)
            throw std::invalid_argument("usage: till-editor DRIVER");
        qx::DriverLibrary driver(argv[1]);
        qx::QXKeyboardAccess keyboard(driver);
        if (!keyboard.Init())
            throw std::runtime_error("the keyboard cannot be opened");
        Till till(keyboard);
        till.show();
        const int status = QApplication::exec();
        keyboard.Done();
        return status;
    } catch (const std::exception& error) {
        QMessageBox::critical(nullptr, QStringLiteral("till-editor"),
                              QString::fromUtf8(error.what()));
        return 1;
    }
}
