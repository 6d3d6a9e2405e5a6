# Tests against a real headless office; the fixture serves other folders' tests too.
add_library(qv_test_office STATIC ${CMAKE_CURRENT_LIST_DIR}/office_fixture.cpp)
target_include_directories(qv_test_office PUBLIC ${CMAKE_CURRENT_LIST_DIR})
target_link_libraries(qv_test_office PUBLIC qv_spreadsheet GTest::gtest)

add_executable(test_office ${CMAKE_CURRENT_LIST_DIR}/test_office.cpp)
target_link_libraries(test_office PRIVATE qv_test_office GTest::gtest_main)
# One program, one office: its tests run in order inside one process.
add_test(NAME office COMMAND test_office)
set_tests_properties(office PROPERTIES TIMEOUT 600)
