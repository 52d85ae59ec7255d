# A process that saves or claims a plan until it is killed, for the tests that kill it.
add_executable(krnqb_plan_write_child plan_write_child.cpp plan_fixture.cpp)
target_link_libraries(krnqb_plan_write_child PRIVATE krnqb_embedded ${KRNQB_FORMAT})

add_executable(krnqb_embedded_plan_tests
  atomic_file_test.cpp
  plan_alignment_test.cpp
  plan_attributes_test.cpp
  plan_changes_test.cpp
  plan_child_process.cpp
  plan_crash_test.cpp
  plan_file_test.cpp
  plan_fixture.cpp
  plan_frame_test.cpp
  plan_layout_test.cpp
  plan_listing_test.cpp
  plan_lock_test.cpp
  plan_save_failure_test.cpp
  plan_save_test.cpp
  plan_table_view_test.cpp
  plan_tables_test.cpp)
target_link_libraries(krnqb_embedded_plan_tests PRIVATE krnqb_embedded ${KRNQB_FORMAT} ${KRNQB_TEST}
  ${KRNQB_TEST_MAIN})
target_compile_definitions(krnqb_embedded_plan_tests PRIVATE
  KRNQB_PLAN_WRITE_CHILD="$<TARGET_FILE:krnqb_plan_write_child>")
add_dependencies(krnqb_embedded_plan_tests krnqb_plan_write_child)
gtest_discover_tests(krnqb_embedded_plan_tests NO_PRETTY_VALUES DISCOVERY_MODE PRE_TEST)
