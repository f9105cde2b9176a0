#include "components/builtin/Passwords.h"

#include <sodium.h>

#include "base/Errors.h"

namespace components::Passwords {

namespace {

void Start() {
    if (sodium_init() < 0)
        throw base::RuntimeError(7, QStringLiteral("The password library cannot be started."));
}

}  // namespace

QString Hash(const QString& password) {
    Start();
    const QByteArray utf8 = password.toUtf8();
    char hash[crypto_pwhash_STRBYTES];
    if (crypto_pwhash_str(hash, utf8.constData(), size_t(utf8.size()),
                          crypto_pwhash_OPSLIMIT_INTERACTIVE,
                          crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0)
        throw base::RuntimeError(7, QStringLiteral("Out of memory while hashing a password."));
    return QString::fromLatin1(hash);
}

bool Matches(const QString& password, const QString& hash) {
    Start();
    static const QString kNobody = Hash(QStringLiteral("nobody's password"));
    const bool known = hash.startsWith(QLatin1String(crypto_pwhash_STRPREFIX));
    const QByteArray stored = (known ? hash : kNobody).toLatin1();
    const QByteArray utf8 = password.toUtf8();
    const bool same =
        crypto_pwhash_str_verify(stored.constData(), utf8.constData(), size_t(utf8.size())) == 0;
    return known && same;
}

}  // namespace components::Passwords
