// toml++ compiled here once, so that no shared library of it is needed at run time.
#define TOML_IMPLEMENTATION
#include <toml++/toml.h>
