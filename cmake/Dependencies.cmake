# Third-party libraries. Natively they come from Debian; for Windows, libcrypto is the
# static MinGW build made by scripts/build-mingw-openssl.sh (the script prints its prefix) and zlib is Debian's MinGW package.
if(WIN32)
  # Runs at every configure: a cached build costs only the computation of its key.
  execute_process(
    COMMAND bash ${CMAKE_SOURCE_DIR}/scripts/build-mingw-openssl.sh
    OUTPUT_VARIABLE openssl_out OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE ".*\n" "" CRYPTELLE_MINGW_OPENSSL "${openssl_out}")
  add_library(OpenSSL::Crypto STATIC IMPORTED)
  set_target_properties(OpenSSL::Crypto PROPERTIES
    IMPORTED_LOCATION ${CRYPTELLE_MINGW_OPENSSL}/lib/libcrypto.a
    INTERFACE_INCLUDE_DIRECTORIES ${CRYPTELLE_MINGW_OPENSSL}/include
    INTERFACE_LINK_LIBRARIES "ws2_32;crypt32;bcrypt")
else()
  find_package(OpenSSL 3 REQUIRED COMPONENTS Crypto)
endif()
# The Windows programs are fully static: zlib too (CMake would otherwise pick the import
# library of zlib1.dll, which a Windows machine does not have).
if(WIN32)
  set(ZLIB_USE_STATIC_LIBS ON)
endif()
find_package(ZLIB REQUIRED)
