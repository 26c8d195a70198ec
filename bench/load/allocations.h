#pragma once

namespace bench {

// Heap allocations of this process since its start.
long allocations();

}  // namespace bench
