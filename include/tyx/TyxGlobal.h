// Export macro shared by every public header of tyx.
#pragma once

/// Marks a class or free function as part of the library's binary interface.
/// Everything else stays hidden in libtyx.so.
#define TYX_EXPORT __attribute__((visibility("default")))
