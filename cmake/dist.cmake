# dist/<preset>/: what a user gets, ready to be started or packed. Orvane.dat, the settings that the program
# writes beside the exe, is left alone.
set(ORVANE_DIST_DIR ${PROJECT_SOURCE_DIR}/dist/${CMAKE_SYSTEM_NAME} CACHE PATH "Folder for the finished program")

add_custom_command(
  OUTPUT ${ORVANE_DIST_DIR}/Orvane.exe
  COMMAND ${CMAKE_COMMAND} -E make_directory ${ORVANE_DIST_DIR}
  COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:Orvane> ${ORVANE_DIST_DIR}/Orvane.exe
  DEPENDS Orvane
  COMMENT "Filling ${ORVANE_DIST_DIR}"
  VERBATIM)
set(dist_outputs ${ORVANE_DIST_DIR}/Orvane.exe)

foreach(folder IN ITEMS Images Help)
  file(GLOB_RECURSE files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*)
  if(files)
    # The list's hash is part of the command, so that a file taken away is a change as well.
    string(MD5 list_hash "${files}")
    # The folder may have been deleted while the build folder stayed: then it is no longer what the stamp says.
    if(NOT EXISTS ${ORVANE_DIST_DIR}/${folder})
      file(REMOVE ${CMAKE_BINARY_DIR}/dist-${folder}.stamp)
    endif()
    add_custom_command(
      OUTPUT ${CMAKE_BINARY_DIR}/dist-${folder}.stamp
      COMMAND ${CMAKE_COMMAND} -DFROM=${PROJECT_SOURCE_DIR}/${folder} -DTO=${ORVANE_DIST_DIR}/${folder}
              -DSTAMP=${CMAKE_BINARY_DIR}/dist-${folder}.stamp -DLIST=${list_hash}
              -P ${PROJECT_SOURCE_DIR}/cmake/mirror_folder.cmake
      DEPENDS ${files} ${PROJECT_SOURCE_DIR}/cmake/mirror_folder.cmake
      VERBATIM)
    list(APPEND dist_outputs ${CMAKE_BINARY_DIR}/dist-${folder}.stamp)
  endif()
endforeach()

add_custom_target(dist ALL DEPENDS ${dist_outputs})
