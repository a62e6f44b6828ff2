// A hint to the processor; no effect on any result.
#pragma once

namespace terravo {

/// Asks for the cache line at an address that will be read soon.
inline void PrefetchLine([[maybe_unused]] const void* address) {
#if defined(__GNUC__) || defined(__clang__)
    __builtin_prefetch(address);
#endif
}

} // namespace terravo
