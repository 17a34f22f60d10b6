# A workbook in an office process of its own; the program and the tests that
# start an office link it.
add_library(korvane_office_host STATIC
  office_document.cpp office_files.cpp office_process.cpp open_profile.cpp open_running.cpp
  private_folder.cpp signal_watch.cpp)
target_link_libraries(korvane_office_host PUBLIC korvane_report)
