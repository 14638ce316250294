/*
 * The exported C names of the text services, as the host calls them. Each is a thin wrapper over
 * the typed functions of text.h; null texts and lengths below 1 count as empty texts.
 *
 *   wchar* out = nullptr; std::int64_t n = 0;
 *   status s = base64EncodeBlob(pool, bytes, size, &out, &n);   // out from the pool, 0-ended
 */
#pragma once

#include <cstdint>

#include "frame/abi.h"

// Base64. *out null: the buffer comes from the pool and gets a 0 after the data (encoders:
// 4 * ceil(n / 3) + 1 characters; decoders: 3 * floor(n / 4) + 5 cells or bytes); otherwise the
// caller's buffer is used as it is. 0x803fc002: no buffer; 0x803fc003: not Base64.
VX_EXPORT vxlocfmt::status base64Encode(void* pool, const std::uint32_t* cells, std::int32_t count,
                                        vxlocfmt::wchar** out, std::int32_t* out_length);
VX_EXPORT vxlocfmt::status base64EncodeBlob(void* pool, const std::uint8_t* bytes,
                                            std::int64_t count, vxlocfmt::wchar** out,
                                            std::int64_t* out_length);
VX_EXPORT vxlocfmt::status base64Decode(void* pool, const vxlocfmt::wchar* text, std::int32_t count,
                                        std::uint32_t** out, std::int32_t* out_length);
VX_EXPORT vxlocfmt::status base64DecodeBlob(void* pool, const vxlocfmt::wchar* text,
                                            std::int32_t count, std::uint8_t** out,
                                            std::int64_t* out_length);

// Character classes: 1 or 0.
VX_EXPORT std::int32_t vxnlsisdigit(vxlocfmt::wchar c);
VX_EXPORT std::int32_t vxnlsislower(vxlocfmt::wchar c);
VX_EXPORT std::int32_t vxnlsisupper(vxlocfmt::wchar c);
VX_EXPORT std::int32_t vxnlsisalpha(vxlocfmt::wchar c);
VX_EXPORT std::int32_t vxnlsisspace(vxlocfmt::wchar c);
VX_EXPORT std::int32_t vxnlsisalnum(vxlocfmt::wchar c);
VX_EXPORT std::int32_t vxnlsisprint(vxlocfmt::wchar c);
VX_EXPORT std::int32_t vxnlsisxdigit(vxlocfmt::wchar c);
VX_EXPORT std::int32_t vxnlsispunct(vxlocfmt::wchar c);
VX_EXPORT std::int32_t vxnlsisgraph(vxlocfmt::wchar c);
VX_EXPORT std::int32_t vxnlsiscntrl(vxlocfmt::wchar c);

// Case mapping of one character, or of a string in place.
VX_EXPORT vxlocfmt::wchar vxtolower(vxlocfmt::wchar c);
VX_EXPORT vxlocfmt::wchar vxtoupper(vxlocfmt::wchar c);
VX_EXPORT vxlocfmt::status vxzstlo(vxlocfmt::wchar* s, std::int64_t length);
VX_EXPORT vxlocfmt::status vxzstup(vxlocfmt::wchar* s, std::int64_t length);

// Wide strings.
VX_EXPORT std::int64_t vxzspos(const vxlocfmt::wchar* s, std::int64_t length, vxlocfmt::wchar c);
VX_EXPORT std::int64_t vxzsnot(const vxlocfmt::wchar* s, std::int64_t length, vxlocfmt::wchar c);
VX_EXPORT std::int64_t vxzsndx(const vxlocfmt::wchar* s, std::int64_t length,
                               const vxlocfmt::wchar* pattern, std::int64_t pattern_length);
VX_EXPORT std::int64_t vxzsver(const vxlocfmt::wchar* s, std::int64_t length,
                               const vxlocfmt::wchar* set, std::int64_t set_length);
VX_EXPORT vxlocfmt::status vxzsrns(vxlocfmt::wchar* s, std::int64_t length,
                                   const vxlocfmt::wchar* to, const vxlocfmt::wchar* from,
                                   std::int64_t count);
VX_EXPORT std::int64_t vxzstrp(const vxlocfmt::wchar* s, std::int64_t length);
VX_EXPORT std::int64_t vxzsStripBlanks(const vxlocfmt::wchar* s, std::int64_t length,
                                       std::int32_t mode);
VX_EXPORT std::int64_t vxzsmov(const vxlocfmt::wchar* src, std::int64_t src_length,
                               vxlocfmt::wchar* dst, std::int64_t dst_length);
VX_EXPORT vxlocfmt::status vxzsjls(vxlocfmt::wchar* s, std::int64_t length,
                                   vxlocfmt::wchar alignment, std::int64_t* length_out,
                                   std::int64_t* offset_out);
VX_EXPORT std::int32_t vxzsCompare(const vxlocfmt::wchar* a, std::int64_t a_length,
                                   const vxlocfmt::wchar* b, std::int64_t b_length);
VX_EXPORT std::int32_t vxzsCompareNorm(const vxlocfmt::wchar* a, std::int64_t a_length,
                                       const vxlocfmt::wchar* b, std::int64_t b_length);
VX_EXPORT std::int32_t vxzseqn(const vxlocfmt::wchar* a, std::int64_t a_length,
                               const vxlocfmt::wchar* b, std::int64_t b_length);
VX_EXPORT std::int32_t vxzsncmp(const vxlocfmt::wchar* a, std::int64_t a_length,
                                const vxlocfmt::wchar* b, std::int64_t b_length);
