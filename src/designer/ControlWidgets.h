// The views as widgets for forms: each owns its control and shows it, with properties that a form
// sets. A host gives the control a keyboard and answers its events, as without a form. Setters have
// the names that the compiler of forms calls.
#pragma once

#include "qxcontrols/device/QXCommonKeyboard.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"
#include "views/QtPlatform.h"

#include <QPointer>
#include <QWidget>

namespace qx::designer {

class ControlWidget : public QWidget {
    Q_OBJECT
    // The file of the keyboard layout, us.qxl for example; empty for none. A file that cannot be
    // used leaves the widget without a layout, and LayoutError reports why.
    Q_PROPERTY(QString keyboardLayout READ KeyboardLayout WRITE setKeyboardLayout)
public:
    [[nodiscard]] const QString& KeyboardLayout() const { return m_layoutFile; }
    void setKeyboardLayout(const QString& file);
    [[nodiscard]] QString LayoutError() const;

protected:
    explicit ControlWidget(QWidget* parent);
    // The view of a widget's control, which it goes before.
    struct Shown {
        explicit Shown(QWidget* shown) : view(shown) {}
        ~Shown() { delete view; }
        Shown(const Shown&) = delete;
        Shown& operator=(const Shown&) = delete;
        QPointer<QWidget> view;
    };
    [[nodiscard]] QWidget* Show(ModuleControl& control, QWidget* view);
    [[nodiscard]] Platform Services() { return m_platform.Services(); }

private:
    views::QtPlatform m_platform;
    QXKeyboardLayoutData m_layout;
    QString m_layoutFile;
    ModuleControl* m_control = nullptr;
};

class CommonKeyboardWidget : public ControlWidget {
    Q_OBJECT
public:
    explicit CommonKeyboardWidget(QWidget* parent = nullptr);
    QXCommonKeyboard control;

private:
    Shown m_shown;
};

class MagnetCardWidget : public ControlWidget {
    Q_OBJECT
    Q_PROPERTY(bool showReleases READ ShowsReleases WRITE setShowReleases)
public:
    explicit MagnetCardWidget(QWidget* parent = nullptr);
    [[nodiscard]] bool ShowsReleases() const { return control.chkShowDetails.Value != 0; }
    void setShowReleases(bool isWanted);
    QXMagnetCard control;

private:
    Shown m_shown;
};

class BarcodeWidget : public ControlWidget {
    Q_OBJECT
    Q_PROPERTY(bool showReleases READ ShowsReleases WRITE setShowReleases)
public:
    explicit BarcodeWidget(QWidget* parent = nullptr);
    [[nodiscard]] bool ShowsReleases() const { return control.chkShowDetails.Value != 0; }
    void setShowReleases(bool isWanted);
    QXBarcode control;

private:
    Shown m_shown;
};

class FreeProgKeysWidget : public ControlWidget {
    Q_OBJECT
    Q_PROPERTY(Module module READ KeyModule WRITE setModule)
    Q_PROPERTY(bool showReleases READ ShowsReleases WRITE setShowReleases)
public:
    // The module whose keys are shown.
    enum Module {
        FreeProgrammableKeys = MODULE_FREEPROGRAMMABLE_KEYS,
        FunctionKeys4610 = MODULE_FUNCKEYS_X1_4610,
        FunctionKeys4620 = MODULE_FUNCKEYS_X1_4620,
        FunctionKeys4630 = MODULE_FUNCKEYS_X1_4630,
    };
    Q_ENUM(Module)

    explicit FreeProgKeysWidget(QWidget* parent = nullptr);
    [[nodiscard]] Module KeyModule() const { return static_cast<Module>(control.ConfigID()); }
    void setModule(Module module);
    [[nodiscard]] bool ShowsReleases() const { return control.chkShowDetails.Value != 0; }
    void setShowReleases(bool isWanted);
    QXFreeProgKeys control;

private:
    Shown m_shown;
};

class LayeredFuncKeysWidget : public ControlWidget {
    Q_OBJECT
    Q_PROPERTY(bool showReleases READ ShowsReleases WRITE setShowReleases)
public:
    explicit LayeredFuncKeysWidget(QWidget* parent = nullptr);
    [[nodiscard]] bool ShowsReleases() const { return control.chkShowDetails.Value != 0; }
    void setShowReleases(bool isWanted);
    QXLayeredFuncKeys control;

private:
    Shown m_shown;
};

class PosWidget : public ControlWidget {
    Q_OBJECT
public:
    explicit PosWidget(QWidget* parent = nullptr);
    QXPos control;

private:
    Shown m_shown;
};

} // namespace qx::designer
