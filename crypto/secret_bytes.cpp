// Wiping of secrets.
#include "crypto/secret_bytes.h"

#include <openssl/crypto.h>

namespace tideloft::crypto
{

void SecretBytes::wipe()
{
    // data() would detach from a sharing copy and wipe the duplicate, leaving the
    // secret where it was; constData() reaches the buffer that really holds it.
    OPENSSL_cleanse(const_cast<char *>(bytes.constData()), static_cast<size_t>(bytes.size()));
    bytes.clear();
}

} // namespace tideloft::crypto
