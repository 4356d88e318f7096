#include "store/Ciphers.h"

#include <array>
#include <openssl/crypto.h>
#include <openssl/evp.h>

namespace store {

void startCiphers()
{
    // The ciphers linked in serve the database alone. What the machine's settings say of secure
    // connections is not for them, and their error texts are never shown; reading both would make
    // opening a quarter longer.
    OPENSSL_init_crypto(OPENSSL_INIT_NO_LOAD_CONFIG | OPENSSL_INIT_NO_LOAD_CRYPTO_STRINGS, nullptr);

    // What the engine asks for first; it is looked up at length once, and found at once from then
    // on.
    std::array<unsigned char, 32> key;
    const std::array<unsigned char, 16> salt = {};
    PKCS5_PBKDF2_HMAC_SHA1("", 0, salt.data(), salt.size(), 1, key.size(), key.data());
    EVP_CIPHER_free(EVP_CIPHER_fetch(nullptr, "AES-256-CBC", nullptr));
}

} // namespace store
