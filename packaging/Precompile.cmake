# Headers that many sources include and that take long to read are compiled once. Sources still include
# what they use: packaging/lint and the Windows builds do without.
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

# qx_precompile(target STANDARD JSON ...): the headers of these kinds.
function(qx_precompile target)
    foreach(kind ${ARGN})
        target_precompile_headers(${target} PRIVATE ${QX_${kind}_HEADERS})
    endforeach()
endfunction()
