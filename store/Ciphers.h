#pragma once

namespace store {

/// Gets the ciphers of encrypted databases ready, which is most of what opening the first one
/// takes. Opening does so itself; a program may do it before, on a thread of its own.
void startCiphers();

} // namespace store
