// FilesPage: the keyboard's files: its program, the chipcard reader's program, its parameter
// memory, and the comparison of its code page with a file.
#pragma once

#include "app/Workbench.h"
#include "host/KeyboardFiles.h"

#include <QWidget>

#include <functional>

class QVBoxLayout;

namespace qx::app {

class FilesPage : public QWidget {
    Q_OBJECT
public:
    explicit FilesPage(Workbench& workbench, QWidget* parent = nullptr);

    // How the page asks for a file, to save or to open; an empty name cancels.
    std::function<QString(const QString& title, bool isSaving, const QString& suggestion)>
        chooseFile;

    // Whether the keyboard's content may be replaced.
    std::function<bool(const QString& question)> confirm;

signals:
    void Told(const QString& text);   // what was done
    void Failed(const QString& text); // why it was not

private:
    enum class Direction { KeyboardToFile, FileToKeyboard };

    void AddFile(QVBoxLayout& column, const host::KeyboardFileKind& kind, const QString& title,
                 const QString& explanation);
    void AddCodePage(QVBoxLayout& column);
    void Transfer(const host::KeyboardFileKind& kind, const QString& title, Direction direction);
    void CompareCodePage();
    void Attempt(const std::function<QString()>& operation); // tells what it returns

    Workbench& m_workbench;
};

} // namespace qx::app
