// Published known-answer vectors for RSA-OAEP with SHA-256 and MGF1 over SHA-256, 2048-bit key.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <array>

namespace tideloft::tests
{

// The last key and its six messages in asymmetric/RSA/oaep-custom/oaep-sha256-sha256.txt of the vectors that
// Debian packages as python3-cryptography-vectors 38.0.4-1. They derive from the NIST vectors for SHA-1, and
// their authors checked them with a second implementation.

/// The private key as PKCS#1 RSAPrivateKey, put together from the eight numbers of the vector file, in
/// Base64.
inline constexpr char oaepPrivateKey[] =
    "MIIEpgIBAAKCAQEA93IBthBSG/iWYWjmTv/L6g/AqVhShdA6VCSVshoduGtV78DbGNBG83k8QkEmfWknYHMU4/4xRyBINso5"
    "qg3HMRzMBOnvvQN1VpB7HTpPBDF+fHFyE6Au6S5samIR+O/WvmMo4Rp8/Z2Dn1eqvrqOYDdbFM0FaDDWC/uU08eOQiHVlUKd"
    "086+EyD1tt4VD9Uf4ZRDRUV/hBgp/4xMTrkc1isGrnLkM6sZLPqFDXBMEcfRsXYFn5w1WuUrCHLj4XGoQKkZ4UVzjZjwjRDQ"
    "Fq1irPsUU1cR3oGob9OjPzM2iAmTvR0gqfANV1J5N1CildKlsRl9i/grFXK1XhTmqGnzEQIDAQABAoIBAQDyn7LV1gLssj6h"
    "nL3WUDKdenyqj5O66YWH46d0Tu89WOGWiD9MgUxQh1tyi3c2GNknVS/yrdebqieksX0BJSlfGqFhYBBWAQIYsupEqlu3/N/N"
    "HV+BptrYgVCEr0x4DpM9cvUuY06TTtM0dj1RbpMT/LMuHiljFB+M+E3hqhXu+Fhj3UsnnHZir6gz+P8+GP4C9S+ncuqBNes6"
    "QEgsyjij1daowIQXpqcYvLTL1YpMGKEChm3viNCi9HMdhDmt1LrXmDvNjdBLWxbpc4RpV6xJ5pD3MYJCC8Zu1UFVmjnnbEEL"
    "mPHNW7FM/QjTh4hjInwp3XD6YQ+F2+dpk2yX17uRAoGBAP0ht+LuvLYgK2QB5CkJwOefmwYyRl7ZVkMIIoHOt+FSprPEKdG/"
    "9eNzrT+31//DC2pY5prmkzkLS3NJwAdjGHkS2FMASPlQpgucn/zH+yTdEoPet8w0VY54O0AmLP4OVmM58526EtpDtyb7aL3F"
    "2yO45u5pW7Lj/FedA2jVZh/XAoGBAPo/yxzIEd0eU6/wBw5FsQ3ev3Z8ho26OpgaJ3FerLTF3IgUsUT3UnrejyxILx3p2qT4"
    "kYS8vK/WqdYDmvpAnxsFAk5adE2lhLmLm8+z3nB64ehpRDJB4kFpmO2gpqy7hRpUwDCTCQLKP1XtwgQZPd1bWzLa1KZQbUcv"
    "FwtVE8dXAoGBAKwFUwrkBNicCgC/jEcbOr3taBOQ7OOePRH2oESor6tvWJxHzced9ULqJK1tiVtlOAfAfI597UTR2Sdy0g3z"
    "GPmGhf357p2HYh/4A31shc6qcd+t5ife1Nmp+VIB34eTRL/P7S+d+Rvc8sWKCscUg3TGPiF89fUfHCiKKnv+sZUnAoGBAJsq"
    "iwphk5IDh+iDcByNYeczwov5UoT2f/Zn4SUOiw/bz44hJnmY0O+WqDfQ2kY2BnhcF/6x+F0fQVeODL4263CZfoCO3aZ3hwB1"
    "bDsxUC92QjUVcE+pQl1E2Koe/roD29gjzLdRtDiipvrk3XQlIpLqXnX98fTd0aRdsnA4ZHcpAoGBAJLO+KMVZ55l9Qe5dsTY"
    "SNxB+Tg8brewGj8G0KDHS2PEEn6yT4QiYvUWasLhUO3bNovt81xRhFJ5Mh4fCTTbiB+A35XdX+RhZtJhL0pk0BCn9z5h0s3L"
    "+xj1FyvVgIHo1MgWmghVuz35hRIfYB/4fj2TTmS+HWaMlidI0FFtSzZ4";

struct OaepVector {
    const char *message;    ///< hexadecimal
    const char *ciphertext; ///< hexadecimal
};

inline constexpr std::array oaepVectors{
    OaepVector{
        "8bba6bf82a6c0f86d5f1756e97956870b08953b06b4eb205bc1694ee",
        "7e48c47e4fe03d398ed225d8ba4774546bdc7852bb4884aeafc7d0f821ecd3bad745993fc7a3578973eb96e7891b79cd"
        "d6b477fcca2036c9e525888afc8563a0245435e0a4cc33616f8f1fa21c7c3d834ca71e47a2cbc8fa6174fe11a71843d1"
        "2cf93136781d4b2dd200ca221599c5596f51d9dd926b43ea49825aa079c63d810faa4f380d8627062e1a53b95978e986"
        "561f8416c87efb70867743890bd9716e58358e28f8722b4ac19e9a371de02d56453d43a608cf2a6aa6377bbf5379692b"
        "6f9d6222673e0ea88c0ac60583cda281fdcadb214085ebe78cfae5a882567b368387e1889ced7a45506c90da26912059"
        "977251d6971efc4bb2a8c6fb11e328fb"},
    OaepVector{
        "e6ad181f053b58a904f2457510373e57",
        "27131eee78cc1506bfe0d6ff3645ca7c3f6f69af5f9a76607e377323a3554c833f6ab9dfc4283328aef300924090908b"
        "a02b849a9048978895b3d3803ceea68e872f967e5256dbe9930a4eb1d4d52d84a6f7b67e646f8e649960cfaf2663e69a"
        "af0f6337cead0460b2077fea154bffc9290f8b944d59ead8cb9d0f0838bd0366d3338a90ec9fc9f20128eaba79f5fb2d"
        "e67678df5480dc4952c48561660d020f2d7f3caf1bb9604cf7452ff89859955e00eb0af6fce64e6c4eaeb3b8f647c127"
        "99f5de5d9fefad097e3ccfe3adb8defe0444d602b2675bc937bd97668afe24eb2279756eea2c47c184435396326ebb1c"
        "5ecd0ea58524a1f0433992c7c4145dff"},
    OaepVector{
        "510a2cf60e866fa2340553c94ea39fbc256311e83e94454b4124",
        "445b05a1e45a1716c2a3049f87b28c08959ddcc0b9b6f489b9e7537a02fa3d0b163a89a095abbfd3d79890576a398b06"
        "9b333de8a9e35c59850f6d676e43ae858afba3339d6352c33d70ea58d452da4c36f9a897b580aa8c73561a7848a6d2db"
        "bc9089838bd9be2ef692515fbea2a61719f28fdf672ac88fabc336d450823f8a6489a1112c169415eef051721a038aef"
        "c4e2369754fcddfa033b82d696c4aef39302a373959d3cfe659eb54afc76332d8b860394632c7ea057a32ff6bb655c8e"
        "27439f59729905de03e96ba2465e87565f9c27c0712ec9dde399a5f293b56e089499a805b5e52bbe73e956c4aceff03e"
        "c9756a08e4f40b2452767c1e004ec226"},
    OaepVector{
        "bcdd190da3b7d300df9a06e22caae2a75f10c91ff667b7c16bde8b53064a2649a94045c9",
        "4afd10e8bcdde7ce419aeae057ade60a8bf43498c0c1fe01950a08e6ab0b9a9daf44dae598e8e5c585003a847c057432"
        "e8e2042d46b4c9a8b2e40935e9dcb506cf59d09eec3f8531f26645294a07c057c32adbb381f08889bab7ce6086232041"
        "d5f8d3671c3e8c3b6f6dbd7697b2acfa4bf1218f3eb663da1275638612be5191225e38b553adf86314fbab90f3e2ae90"
        "457a5345094e3588d65cdbdc3a046ff8cf8a5ed82e4ed6022961e809016cefc5cdb2e97b6f791aac1a03df5a5dba91d2"
        "88437fda0a9e4983da188a23e8d55ee656f7c9614d616d7e2d21941855d14da543086e819c4842b1e7990313206ef647"
        "79b87544729458ddf9d16902b7c7af2a"},
    OaepVector{
        "a7dd6c7dc24b46f9dd5f1e91ada4c3b3df947e877232a9",
        "5a4c13c33cec37cd2e2b82c7e444715dc6b33cb1c1f7d235aece8a85f5b357915f81d728872b8df2ed194b7223740927"
        "dbdc084f810911ee97d7e2233cccdd55eab5a385810085af04e0e072008f2f171427818de87d5b478f92a5c648870376"
        "23b5335a21b2f703c14edd9009bfea0d5649947124f828e2198ab422925946057b47c2c0c60612d92f560e0666be7054"
        "984a20e855b87e7d40bd2c13797e1298daac9b2677cd3b620c3f1428b23dd5cc9e845c590a60a4592365689204ec09d9"
        "1fbb02e2a6d6bb70bf4d1b3d2031928a869f9c3aae83ecc418062134fe94ee448954565eafd1d5cf11a79c42f58dbcf3"
        "bcdb06b287e1f132dbbf799965bbca27"},
    OaepVector{
        "eaf1a73a1b0c4609537de69cd9228bbcfb9a8ca8c6c3efaf056fe4a7f4634ed00b7c39ec6922d7b8ea2c04ebac"
        "",
        "e2c0f612d05b980baee621e21932853c4e28ae62a1afb8b97f01736a06e185abb608caa4c523de88027968ed3c3e9cd7"
        "058714ab18ec2c8e4eddb147f4407f328350c49521284d83e76a2809bcba292da841630e32e7b59de108cb3e222353f7"
        "07843fc2a1a14ecfdb83a2c047387217dfe5cab2b01cf8899b95be271786bc542aad154838db43d204181bbf54e3ccd5"
        "62a84fbaa91b356f306bb842f837010e8a789f098b690b6036e0368c3672aff842d6f6a752adb324903d7be2cfa0d46f"
        "2a98f825a48952c1b1b910bc9f14407c7a2cef74ffedcf7854b3523af91816354bce7b16a3f4d6a7f6af8974ccf3001b"
        "f19ef0fb1ec29826789509221020e470"},
};

} // namespace tideloft::tests
