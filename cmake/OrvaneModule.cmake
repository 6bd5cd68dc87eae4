# orv_add_module(<Target> FOLDER <dir> [PUBLIC_DEPS ...] [PRIVATE_DEPS ...])
# One shared library per host or plug-in module: sources from Private/, headers
# from Public/ (installed flat into include/ so that consumers write
# #include "CoreMinimal.h" or #include "Dom/JsonObject.h"). A module that only the
# host loads, by name, may have no Public/.
function(orv_add_module Target)
  cmake_parse_arguments(ARG "" "FOLDER" "PUBLIC_DEPS;PRIVATE_DEPS" ${ARGN})
  file(GLOB_RECURSE Sources CONFIGURE_DEPENDS ${ARG_FOLDER}/Private/*.cpp)
  add_library(${Target} SHARED ${Sources})
  add_library(Cadrel::${Target} ALIAS ${Target})
  target_include_directories(${Target} PRIVATE ${ARG_FOLDER}/Private)
  if(EXISTS ${ARG_FOLDER}/Public)
    target_include_directories(${Target}
      PUBLIC $<BUILD_INTERFACE:${ARG_FOLDER}/Public> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    install(DIRECTORY ${ARG_FOLDER}/Public/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
  endif()
  target_link_libraries(${Target} PUBLIC ${ARG_PUBLIC_DEPS} PRIVATE ${ARG_PRIVATE_DEPS} cadrel_warnings)
  install(TARGETS ${Target} EXPORT CadrelBlendShapeTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endfunction()
