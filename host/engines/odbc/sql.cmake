# Passing statements through ODBC, where a driver manager is installed.
if(WIN32)
  set(ODBC_LIBRARY odbc32)  # the system's own
else()
  find_path(ODBC_INCLUDE_DIR sqlext.h)
  find_library(ODBC_LIBRARY odbc)
  mark_as_advanced(ODBC_INCLUDE_DIR ODBC_LIBRARY)
  if(NOT ODBC_INCLUDE_DIR OR NOT ODBC_LIBRARY)
    message(STATUS "Without ODBC: its driver manager is not installed (unixodbc-dev)")
    return()
  endif()
endif()

add_library(quoracc_odbc
  ${CMAKE_CURRENT_LIST_DIR}/connection.cpp
  ${CMAKE_CURRENT_LIST_DIR}/driver/address.cpp
  ${CMAKE_CURRENT_LIST_DIR}/driver/database.cpp
  ${CMAKE_CURRENT_LIST_DIR}/driver/driver_error.cpp
  ${CMAKE_CURRENT_LIST_DIR}/driver/handle.cpp
  ${CMAKE_CURRENT_LIST_DIR}/driver/session.cpp
  ${CMAKE_CURRENT_LIST_DIR}/driver/wide_text.cpp
  ${CMAKE_CURRENT_LIST_DIR}/opening.cpp
  ${CMAKE_CURRENT_LIST_DIR}/run/arguments.cpp
  ${CMAKE_CURRENT_LIST_DIR}/run/batch.cpp
  ${CMAKE_CURRENT_LIST_DIR}/run/cursor.cpp
  ${CMAKE_CURRENT_LIST_DIR}/run/row_changer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/run/statement.cpp
  ${CMAKE_CURRENT_LIST_DIR}/run/table.cpp
  ${CMAKE_CURRENT_LIST_DIR}/run/text_look.cpp
  ${CMAKE_CURRENT_LIST_DIR}/store.cpp
  ${CMAKE_CURRENT_LIST_DIR}/transaction.cpp)
target_include_directories(quoracc_odbc PUBLIC ${PROJECT_SOURCE_DIR})
if(ODBC_INCLUDE_DIR)
  target_include_directories(quoracc_odbc SYSTEM PRIVATE ${ODBC_INCLUDE_DIR})
endif()
target_link_libraries(quoracc_odbc PUBLIC quoracc_rows PRIVATE ${ODBC_LIBRARY})
set_target_properties(quoracc_odbc PROPERTIES UNITY_BUILD OFF)
quoracc_target(quoracc_odbc)
