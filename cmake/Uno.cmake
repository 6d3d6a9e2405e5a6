# The office's UNO API for C++: Debian ships the SDK's libraries and the type
# database, but no generated headers, so cppumaker writes them at build time.
set(LO_PROGRAM /usr/lib/libreoffice/program)
set(LO_SDK /usr/lib/libreoffice/sdk)
set(UNO_INCLUDE ${CMAKE_BINARY_DIR}/uno-include)
set(UNO_STAMP ${UNO_INCLUDE}/.stamp)

add_custom_command(
  OUTPUT ${UNO_STAMP}
  COMMAND ${LO_SDK}/bin/cppumaker -Gc -O${UNO_INCLUDE}
          ${LO_PROGRAM}/types.rdb ${LO_PROGRAM}/types/offapi.rdb
  COMMAND ${CMAKE_COMMAND} -E touch ${UNO_STAMP}
  COMMENT "Generating the office's UNO headers"
  VERBATIM)
add_custom_target(uno_headers DEPENDS ${UNO_STAMP})

add_library(uno_sdk INTERFACE)
add_dependencies(uno_sdk uno_headers)
target_include_directories(uno_sdk SYSTEM INTERFACE ${UNO_INCLUDE} /usr/include/libreoffice)
target_compile_definitions(uno_sdk INTERFACE LINUX CPPU_ENV=gcc3)
target_link_directories(uno_sdk INTERFACE ${LO_SDK}/lib)
target_link_libraries(uno_sdk INTERFACE uno_cppu uno_cppuhelpergcc3 uno_sal)
# Without the rpath the linker cannot resolve the office's own libraries.
target_link_options(uno_sdk INTERFACE -Wl,-rpath,${LO_PROGRAM} -Wl,-rpath-link,${LO_PROGRAM})
