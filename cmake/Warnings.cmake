add_library(cadrel_warnings INTERFACE)
target_compile_options(cadrel_warnings INTERFACE -Wall -Wextra)
install(TARGETS cadrel_warnings EXPORT CadrelBlendShapeTargets)
