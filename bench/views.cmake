add_executable(views ${CMAKE_CURRENT_LIST_DIR}/views.cpp)
target_include_directories(views PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(views PRIVATE marovane_views marovane_test_support)
add_dependencies(views record_database error_catalogue)
