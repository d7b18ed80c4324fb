# wordbank DATA_DIR WEXBIN PARTNERS: partners found, size of replies, time of queries
add_executable(bench_wordbank wordbank.cpp)
set_target_properties(bench_wordbank PROPERTIES OUTPUT_NAME wordbank)
target_link_libraries(bench_wordbank PRIVATE wexbin)
add_dependencies(bench_wordbank wexbin_data wexbin_program)
