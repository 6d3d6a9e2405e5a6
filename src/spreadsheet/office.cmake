# The office connection: everything that speaks UNO.
add_library(qv_spreadsheet STATIC ${CMAKE_CURRENT_LIST_DIR}/uno_office.cpp)
target_link_libraries(qv_spreadsheet PUBLIC qv_worksheet PRIVATE uno_sdk)
target_link_options(qv_spreadsheet INTERFACE -Wl,-rpath,/usr/lib/libreoffice/program
                    -Wl,-rpath-link,/usr/lib/libreoffice/program)
target_link_directories(qv_spreadsheet INTERFACE /usr/lib/libreoffice/sdk/lib)
# The UNO headers trip warnings that are not ours.
target_compile_options(qv_spreadsheet PRIVATE -Wno-deprecated-declarations)

add_executable(qv-office ${CMAKE_CURRENT_LIST_DIR}/office_tool.cpp)
target_link_libraries(qv-office PRIVATE qv_spreadsheet)
