// The library's one way of building a process-wide table on first use.
#pragma once

#include <type_traits>

namespace tyx::internal {

/// The value that \p build makes, made on the first call only and kept for
/// the life of the process. The language's guarded initialisation of a
/// function-local static makes the first use safe from several threads at
/// once (the others wait), and every later call reads without a lock. Each
/// call site passes its own lambda, so each site has its own table.
template <class Build>
const std::invoke_result_t<Build> &buildOnce(Build build)
{
    static const std::invoke_result_t<Build> table = build();
    return table;
}

} // namespace tyx::internal
