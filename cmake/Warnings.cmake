# hlx_warnings: what every hand-written target is compiled with. Warnings are errors.
add_library(hlx_warnings INTERFACE)
target_compile_options(hlx_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wformat=2 -Wcast-qual -Wvla
  -Wundef -Werror)
