# The two libraries that a statistics host brings along, as imported targets. Used by the build
# when the bundled stand-ins are not wanted, and by the package of a library built that way.
# MCCOMVOR_LIBRARY, MCCOMVOR_INCLUDE_DIR, VORLWCOM_LIBRARY and VORLWCOM_INCLUDE_DIR name them.
foreach(host_library MCCOMVOR VORLWCOM)
  foreach(path LIBRARY INCLUDE_DIR)
    if(NOT EXISTS "${${host_library}_${path}}")
      message(FATAL_ERROR "${host_library}_${path} must name the host's own "
        "(it is \"${${host_library}_${path}}\"), or set MCBINNING_BUNDLED_HOST=ON")
    endif()
  endforeach()
  if(NOT TARGET MCBinning::${host_library})
    add_library(MCBinning::${host_library} UNKNOWN IMPORTED GLOBAL)
    set_target_properties(MCBinning::${host_library} PROPERTIES
      IMPORTED_LOCATION ${${host_library}_LIBRARY}
      INTERFACE_INCLUDE_DIRECTORIES ${${host_library}_INCLUDE_DIR})
  endif()
endforeach()
