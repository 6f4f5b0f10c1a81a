// TestedKeyboard: the keyboard of the Test page: a copy of the connected one, with what it holds or
// with what it would hold if the document were written. The keyboard itself is only read.
#pragma once

#include "host/KeyboardContent.h"
#include "simulator/KeyboardModel.h"
#include "simulator/TestDrive.h"

#include <QCoreApplication>

#include <memory>
#include <optional>
#include <string>

namespace qx {
class QXLayeredFuncKeys;
}
namespace qx::host {
class Configuration;
}

namespace qx::app {

class Workbench;

class TestedKeyboard {
    Q_DECLARE_TR_FUNCTIONS(TestedKeyboard)
public:
    enum class Source { Document, Keyboard };

    explicit TestedKeyboard(Workbench& workbench);
    ~TestedKeyboard();

    void Use(Source source);
    // These are something else from now on.
    void ForgetDocument();
    void ForgetKeyboard();

    // Reads the keyboard if necessary. Throws host::Error. The result is used before this object
    // changes.
    [[nodiscard]] sim::TestDrive Drive();
    // The function keys of what Drive() returned last.
    [[nodiscard]] const QXLayeredFuncKeys& FunctionKeys() const;

private:
    struct Copy {
        sim::KeyboardModel model;
        std::string memory;
    };
    [[nodiscard]] static Copy CopyOf(const host::KeyboardContent& content);

    Workbench& m_workbench;
    Source m_source = Source::Document;
    std::optional<host::KeyboardContent> m_held;
    std::optional<Copy> m_copy;
    std::unique_ptr<host::Configuration> m_settings; // the copy's
};

} // namespace qx::app
