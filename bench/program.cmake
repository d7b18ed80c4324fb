add_executable(check_sentence ${CMAKE_CURRENT_LIST_DIR}/check_sentence.cpp)
target_include_directories(check_sentence PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(check_sentence PRIVATE marovane_app marovane_headless tolvex)
add_dependencies(check_sentence tolvex2 package_mrvdata package_tolvex)

add_executable(startup ${CMAKE_CURRENT_LIST_DIR}/startup.cpp)
target_link_libraries(startup PRIVATE marovane_desktop)
add_dependencies(startup marovane)
