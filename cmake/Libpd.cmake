# libpd is built from Debian's Pure Data source package, with our patches
# (tools/libpd/patches), into the build tree (see tools/libpd/build-libpd.sh)
# once; later configures reuse it. The tests also get the same source built
# without our patches (libpd_stock), to show that the patches change no
# reading.
set(VELTRA_LIBPD_DIR "${CMAKE_BINARY_DIR}/_deps/libpd" CACHE PATH "Where libpd is built and cached")
set(VELTRA_LIBPD_STOCK_DIR "${VELTRA_LIBPD_DIR}-stock" CACHE PATH
  "Where libpd without our patches is built and cached, for the tests")
# CTest defines BUILD_TESTING later, ON unless it was set OFF.
if(NOT DEFINED BUILD_TESTING OR BUILD_TESTING)
  set(_libpd_stock_arg "${VELTRA_LIBPD_STOCK_DIR}")
endif()
# With this build's compiler and archive indexer, so that a cross build gets a
# library for its target.
execute_process(
  COMMAND ${CMAKE_COMMAND} -E env CC=${CMAKE_C_COMPILER} RANLIB=${CMAKE_RANLIB}
    bash "${CMAKE_SOURCE_DIR}/tools/libpd/build-libpd.sh" "${VELTRA_LIBPD_DIR}" ${_libpd_stock_arg}
  RESULT_VARIABLE _libpd_result)
if(NOT _libpd_result EQUAL 0)
  message(FATAL_ERROR "libpd could not be built (see the messages above)")
endif()
# A changed patch or script builds the library again at the next build.
file(GLOB _libpd_patches "${CMAKE_SOURCE_DIR}/tools/libpd/patches/*.patch")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
  "${CMAKE_SOURCE_DIR}/tools/libpd/build-libpd.sh" ${_libpd_patches})

# veltra_add_libpd(TARGET DIR): an imported libpd built into DIR.
function(veltra_add_libpd target dir)
  add_library(${target} STATIC IMPORTED GLOBAL)
  set_target_properties(${target} PROPERTIES
    IMPORTED_LOCATION "${dir}/lib/libpd.a"
    INTERFACE_INCLUDE_DIRECTORIES "${dir}/include"
    # Everything that includes m_pd.h must agree with the library on these.
    INTERFACE_COMPILE_DEFINITIONS "PD;PDINSTANCE;LIBPD_EXTRA"
    INTERFACE_LINK_LIBRARIES "Threads::Threads;m;dl")
endfunction()
veltra_add_libpd(libpd "${VELTRA_LIBPD_DIR}")
if(_libpd_stock_arg)
  veltra_add_libpd(libpd_stock "${VELTRA_LIBPD_STOCK_DIR}")
endif()
