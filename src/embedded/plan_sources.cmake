# The file plan: reading and writing it whole, its lock, comparing and showing its tables.
set(planSources
  atomic_file.cpp
  file_descriptor.cpp
  file_fault.cpp
  file_operations.cpp
  file_reading.cpp
  plan_alignment.cpp
  plan_attributes.cpp
  plan_changes.cpp
  plan_characters.cpp
  plan_content.cpp
  plan_document.cpp
  plan_file.cpp
  plan_frame.cpp
  plan_headings.cpp
  plan_layout.cpp
  plan_listing.cpp
  plan_lock.cpp
  plan_path.cpp
  plan_table_view.cpp
  plan_tables.cpp)
list(TRANSFORM planSources PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
target_sources(krnqb_embedded PRIVATE ${planSources})
