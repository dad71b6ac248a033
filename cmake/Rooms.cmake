# A room is one static library over one or more folders of the project. Its headers are reachable only
# through its own include folder of links, so an include against the arrow between rooms does not compile.
#
#   corvane_room(model FOLDERS model queries SOURCES model/GTask.cpp ... DEPENDS corvane_dates corvane_text)
function(corvane_room name)
    cmake_parse_arguments(PARSE_ARGV 1 room "" "" "FOLDERS;SOURCES;DEPENDS")
    set(includes ${PROJECT_BINARY_DIR}/rooms/${name})
    foreach(folder IN LISTS room_FOLDERS)
        cmake_path(GET folder PARENT_PATH parent)
        file(MAKE_DIRECTORY ${includes}/${parent})
        file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${includes}/${folder} SYMBOLIC)
    endforeach()
    list(TRANSFORM room_SOURCES PREPEND ${PROJECT_SOURCE_DIR}/)
    add_library(corvane_${name} STATIC ${room_SOURCES})
    target_include_directories(corvane_${name} PUBLIC ${includes})
    target_link_libraries(corvane_${name} PUBLIC ${room_DEPENDS})
endfunction()

# The tests of one room: one program, one CTest entry a test.
#
#   corvane_tests(dates SOURCES RepeatArithmeticTests.cpp ... DEPENDS corvane_dates)
function(corvane_tests name)
    cmake_parse_arguments(PARSE_ARGV 1 tests "" "" "SOURCES;DEPENDS")
    add_executable(corvane_${name}_tests ${tests_SOURCES})
    target_link_libraries(corvane_${name}_tests PRIVATE ${tests_DEPENDS} corvane_test_support GTest::gmock
                                                        GTest::gtest_main)
    gtest_discover_tests(corvane_${name}_tests TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60)
endfunction()
