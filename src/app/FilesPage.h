// FilesPage: the keyboard's files: its firmware, that of the chipcard reader, its parameter
// memory, and the comparison of its code page with a file.
#pragma once

#include "app/Failure.h"
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

    // How the page asks for a file to save or open; an empty name cancels.
    std::function<QString(const QString& title, bool isSaving, const QString& suggestion)>
        chooseFile;

    // Whether the keyboard's contents may be replaced.
    std::function<bool(const QString& question)> confirm;

signals:
    void Reported(const QString& text);
    void Stopped(const QString& text); // by the user, before anything was written
    void Failed(const Failure& failure);

private:
    enum class Direction { KeyboardToFile, FileToKeyboard };

    void AddFile(QVBoxLayout& column, const host::KeyboardFileKind& kind, const QString& title,
                 const QString& explanation);
    void AddCodePage(QVBoxLayout& column);
    void Transfer(const host::KeyboardFileKind& kind, const QString& title, Direction direction);
    void CompareCodePage();
    // Shows `doing` during the operation, then its returned text, or its failure with the text
    // `failed`.
    void Attempt(const QString& doing, Work work, const QString& failed,
                 const std::function<QString()>& operation);

    Workbench& m_workbench;
};

} // namespace qx::app
