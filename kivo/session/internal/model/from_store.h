#pragma once

class KIVO_INFO;

namespace kivo_session {

struct Description;

// Reads a store once, through copies of its maps and lists, whose cursors are their own.
void read_store(const KIVO_INFO& info, Description& description);

}  // namespace kivo_session
