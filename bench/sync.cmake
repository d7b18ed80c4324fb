add_executable(sync_bench ${CMAKE_CURRENT_LIST_DIR}/sync.cpp)
target_include_directories(sync_bench PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(sync_bench PRIVATE marovane_test_sync)
