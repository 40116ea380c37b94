# hlx_warnings: what every hand-written target is compiled with. The developers' presets make them errors
# (CMAKE_COMPILE_WARNING_AS_ERROR): a newer compiler's new warning must not stop an integrator.
add_library(hlx_warnings INTERFACE)
target_compile_options(hlx_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wformat=2 -Wcast-qual -Wvla
  -Wundef
  # g++ 13 and 14 take any reference that a function with a temporary argument returns for one into that argument.
  $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-dangling-reference>)
