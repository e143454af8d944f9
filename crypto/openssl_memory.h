// OpenSSL's memory, which holds private keys for a moment.
#pragma once

namespace tideloft::crypto
{

/// Does nothing when it is called: a program that links it has OpenSSL overwrite all that it frees, from
/// before main() on.
void wipeWhatOpensslFrees();

} // namespace tideloft::crypto
