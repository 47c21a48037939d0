# Headers that many files of a target read are compiled once for all of them.
#
# A file still has to name what it uses: the presets "debug" and "fuzz" build without.
option(QUORVANTA_PRECOMPILED "Compile the headers of libraries once a target" ON)

set(quorvanta_standard_headers
  <algorithm> <array> <bit> <charconv> <cmath> <cstdint> <cstdio> <filesystem> <fstream>
  <functional> <initializer_list> <iostream> <limits> <map> <optional> <set> <span> <sstream>
  <stdexcept> <string> <string_view> <utility> <vector>)
set(quorvanta_window_headers
  <QAction> <QApplication> <QCheckBox> <QClipboard> <QComboBox> <QDialog> <QDialogButtonBox>
  <QFormLayout> <QGroupBox> <QKeyEvent> <QLabel> <QLineEdit> <QListWidget> <QMainWindow> <QMdiArea>
  <QMdiSubWindow> <QMenuBar> <QMimeData> <QMouseEvent> <QPainter> <QPlainTextEdit> <QPointer>
  <QPushButton> <QRadioButton> <QScrollBar> <QSignalBlocker> <QStatusBar> <QString> <QStyle>
  <QTextBrowser> <QTimer> <QUrl> <QVBoxLayout> <QWidget>)

# quorvanta_precompile(target STANDARD [WINDOWS] [CHECKS])
function(quorvanta_precompile target)
  if(NOT QUORVANTA_PRECOMPILED)
    return()
  endif()
  cmake_parse_arguments(precompile "STANDARD;WINDOWS;CHECKS" "" "" ${ARGN})
  if(precompile_STANDARD)
    target_precompile_headers(${target} PRIVATE ${quorvanta_standard_headers})
  endif()
  if(precompile_WINDOWS)
    target_precompile_headers(${target} PRIVATE ${quorvanta_window_headers})
  endif()
  if(precompile_CHECKS)
    target_precompile_headers(${target} PRIVATE <gtest/gtest.h>)
  endif()
endfunction()
