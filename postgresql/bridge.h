/*
 * The C face of the embedding API for the PostgreSQL functions (functions.c). Everything behind
 * it is C++ and catches its own exceptions: a call answers an outcome and, when it failed, a
 * message in the caller's buffer, so that the caller raises the error with no C++ frame left
 * between it and PostgreSQL's longjmp.
 *
 *   char message[VXPG_MESSAGE_SIZE];
 *   const char* text; size_t length;
 *   if (vxpg_format("NLDATE20.", 9, "de_DE", 5, vxpg_number, 23000, &text, &length, message) != vxpg_ok) ...
 */
#ifndef VXPG_BRIDGE_H
#define VXPG_BRIDGE_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

enum { VXPG_MESSAGE_SIZE = 512 };

typedef enum vxpg_outcome {
    vxpg_ok,
    vxpg_missing,          /* the text was not read, or the result is a missing value: SQL NULL */
    vxpg_bad_request,      /* unknown name, width, decimals or locale; a reader of the wrong kind */
    vxpg_no_library,       /* libvxlocfmt.so could not be loaded */
    vxpg_out_of_memory,
    vxpg_internal
} vxpg_outcome;

/* What an SQL value is, so the format's kind decides what it is handed. */
typedef enum vxpg_value_type {
    vxpg_number,  /* handed as it stands */
    vxpg_date,    /* a day number (days since 1960-01-01) */
    vxpg_datetime /* seconds since 1960-01-01T00:00:00 */
} vxpg_value_type;

/* The library to load; NULL or "" leaves the choice to vxpg_library_path's rules. Takes effect
   before the first call only. */
void vxpg_set_library(const char* path);

/* Formats `value` of `type` with SPEC in LOCALE (neither NUL-terminated). On vxpg_ok, *text
   (UTF-8, not terminated) stays valid until the next call. */
vxpg_outcome vxpg_format(const char* spec, size_t spec_length, const char* locale, size_t locale_length,
                         vxpg_value_type type, double value, const char** text, size_t* length,
                         char message[VXPG_MESSAGE_SIZE]);

/* Reads the UTF-8 `text` with SPEC in LOCALE into *value as `type` asks: vxpg_number the
   informat's own result; vxpg_date and vxpg_datetime only from date, datetime and any-date readers
   (others are a bad request), converted to days or seconds. vxpg_missing when nothing was read. */
vxpg_outcome vxpg_read(const char* spec, size_t spec_length, const char* locale, size_t locale_length,
                       const char* text, size_t text_length, vxpg_value_type type, double* value,
                       char message[VXPG_MESSAGE_SIZE]);

#ifdef __cplusplus
}
#endif

#endif
