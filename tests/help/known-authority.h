#pragma once

#include <QByteArray>

#ifdef Q_OS_WIN
#include <windows.h>
// Not to be sorted: it needs the one before.
#include <wincrypt.h>
#endif

/**
 * Qt hands Windows its authorities as a file of keys, from which Wine takes nothing where there is no key. So
 * the system gets to know of one otherwise. It is still Qt alone that trusts it.
 */
class KnownAuthority
{
public:
#ifdef Q_OS_WIN
    explicit KnownAuthority(const QByteArray& bytes)
    {
        CertAddEncodedCertificateToStore(store, X509_ASN_ENCODING,
            reinterpret_cast<const BYTE*>(bytes.constData()), static_cast<DWORD>(bytes.size()),
            CERT_STORE_ADD_ALWAYS, &authority);
        CertControlStore(store, 0, CERT_STORE_CTRL_COMMIT, nullptr);
    }

    ~KnownAuthority()
    {
        CertDeleteCertificateFromStore(authority);
        CertCloseStore(store, 0);
    }

private:
    HCERTSTORE store = CertOpenSystemStoreW(0, L"CA");
    PCCERT_CONTEXT authority = nullptr;
#else
    explicit KnownAuthority(const QByteArray& /*bytes*/) { }
#endif
};
