# Benches of the check engine: run by hand, see docs/engine.md.
foreach(bench detector_quality engine_fuzz engine_quality engine_speed)
  add_executable(${bench} ${CMAKE_CURRENT_LIST_DIR}/${bench}.cpp)
  target_link_libraries(${bench} PRIVATE tolvex)
  add_dependencies(${bench} tolvex_data tolvex2)
endforeach()
target_sources(engine_quality PRIVATE ${PROJECT_SOURCE_DIR}/tests/engine/learner_pairs.cpp)
