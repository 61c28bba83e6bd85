# Compilers other than MinGW's call Microsoft's linker, or lld in its place: other import libraries.

if(NOT MINGW)
  foreach(library zvxg many core)
    if(TARGET zvxg::${library})
      get_target_property(import zvxg::${library} IMPORTED_IMPLIB_RELEASE)
      string(REGEX REPLACE "lib([a-z]+)\\.dll\\.a$" "\\1.lib" import ${import})
      set_target_properties(zvxg::${library} PROPERTIES IMPORTED_IMPLIB_RELEASE ${import})
    endif()
  endforeach()
endif()
