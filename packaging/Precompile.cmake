# Headers that many sources include and that are slow to parse are precompiled. Sources must still
# include what they use: packaging/lint and the Windows builds do not precompile.
if(MINGW)
    set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
endif()

set(QX_STANDARD_HEADERS <algorithm> <array> <filesystem> <functional> <map> <memory> <optional> <set>
                        <stdexcept> <string> <string_view> <vector>)
set(QX_JSON_HEADERS <nlohmann/json.hpp>)
set(QX_QT_HEADERS <QApplication> <QCheckBox> <QDialog> <QGridLayout> <QGroupBox> <QLabel>
                  <QLineEdit> <QListWidget> <QMainWindow> <QMessageBox> <QPainter> <QPushButton>
                  <QVBoxLayout>)
set(QX_TEST_HEADERS <gtest/gtest.h>)

# qx_precompile(target STANDARD JSON ...): precompiles the headers of these groups.
function(qx_precompile target)
    foreach(kind ${ARGN})
        target_precompile_headers(${target} PRIVATE ${QX_${kind}_HEADERS})
    endforeach()
endfunction()
