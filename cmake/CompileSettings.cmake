# The options every target of the project is compiled with.
add_library(mcbinning_compile_settings INTERFACE)
target_compile_features(mcbinning_compile_settings INTERFACE cxx_std_20)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  # A contracted multiply-add changes the last bit and with it the choice between tied splits.
  target_compile_options(mcbinning_compile_settings INTERFACE
    -ffp-contract=off -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    $<$<BOOL:${MCBINNING_WARNINGS_AS_ERRORS}>:-Werror>)
elseif(MSVC)
  target_compile_options(mcbinning_compile_settings INTERFACE /fp:precise /W4
    $<$<BOOL:${MCBINNING_WARNINGS_AS_ERRORS}>:/WX>)
endif()
