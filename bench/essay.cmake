add_executable(essay_walk ${CMAKE_CURRENT_LIST_DIR}/essay.cpp)
target_include_directories(essay_walk PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(essay_walk PRIVATE marovane_app marovane_headless tolvex)
add_dependencies(essay_walk record_database error_catalogue)
