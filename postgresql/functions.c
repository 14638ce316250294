/*
 * The SQL functions of the extension: arguments taken from PostgreSQL, values converted between
 * its date and timestamp and the library's day numbers and seconds since 1960, text converted
 * between the database encoding and UTF-8, errors raised. The work is done behind bridge.h, which
 * returns before anything here can longjmp.
 */
#include "postgres.h"

#include <math.h>

#include "fmgr.h"
#include "mb/pg_wchar.h"
#include "utils/builtins.h"
#include "utils/date.h"
#include "utils/guc.h"
#include "utils/timestamp.h"

#include "bridge.h"

PG_MODULE_MAGIC;

/* PostgreSQL counts from 2000-01-01, the library from 1960-01-01: 40 years, 10 of them leap. */
#define VXPG_EPOCH_DAYS 14610
#define VXPG_SECONDS_PER_DAY 86400

static char* library_setting = NULL;

static void assign_library(const char* value, void* extra) {
    (void)extra;
    vxpg_set_library(value);
}

void _PG_init(void);

void _PG_init(void) {
    DefineCustomStringVariable("vxlocfmt.library", "Path of libvxlocfmt.so.",
                               "Empty: $VXLOCFMT_LIBRARY, else beside this module, else the host runtime's search.",
                               &library_setting, "", PGC_SUSET, 0, NULL, assign_library, NULL);
    MarkGUCPrefixReserved("vxlocfmt");
}

/* Raises what a bridge call reported. */
static void pg_attribute_noreturn() raise_outcome(vxpg_outcome outcome, const char* message) {
    switch (outcome) {
        case vxpg_bad_request:
            ereport(ERROR, (errcode(ERRCODE_INVALID_PARAMETER_VALUE), errmsg("%s", message)));
            break;
        case vxpg_no_library:
            ereport(ERROR, (errcode(ERRCODE_UNDEFINED_FILE), errmsg("could not load the vxlocfmt library"),
                            errdetail("%s", message),
                            errhint("Set vxlocfmt.library, or VXLOCFMT_LIBRARY in the server's environment.")));
            break;
        case vxpg_out_of_memory:
            ereport(ERROR, (errcode(ERRCODE_OUT_OF_MEMORY), errmsg("out of memory")));
            break;
        default:
            ereport(ERROR, (errcode(ERRCODE_INTERNAL_ERROR), errmsg("vxlocfmt: %s", message)));
    }
    pg_unreachable();
}

/* The library's UTF-8 as a text datum in the database encoding (converted first only when the
   database is not UTF-8). */
static text* text_from_utf8(const char* utf8, size_t length) {
    const char* server = pg_any_to_server(utf8, (int)length, PG_UTF8);
    return cstring_to_text_with_len(server, server == utf8 ? (int)length : (int)strlen(server));
}

static Datum format_datum(FunctionCallInfo fcinfo, vxpg_value_type type, double value) {
    const text* spec = PG_GETARG_TEXT_PP(1);
    const text* locale = PG_GETARG_TEXT_PP(2);
    char message[VXPG_MESSAGE_SIZE];
    const char* out = NULL;
    size_t length = 0;
    const vxpg_outcome outcome = vxpg_format(VARDATA_ANY(spec), VARSIZE_ANY_EXHDR(spec), VARDATA_ANY(locale),
                                             VARSIZE_ANY_EXHDR(locale), type, value, &out, &length, message);
    if (outcome != vxpg_ok) raise_outcome(outcome, message);
    if (length == 0) out = "";  /* an empty view may carry no pointer */
    PG_RETURN_TEXT_P(text_from_utf8(out, length));
}

PG_FUNCTION_INFO_V1(vx_format_float8);
Datum vx_format_float8(PG_FUNCTION_ARGS) { return format_datum(fcinfo, vxpg_number, PG_GETARG_FLOAT8(0)); }

PG_FUNCTION_INFO_V1(vx_format_numeric);
Datum vx_format_numeric(PG_FUNCTION_ARGS) {
    const double value = DatumGetFloat8(DirectFunctionCall1(numeric_float8, PG_GETARG_DATUM(0)));
    return format_datum(fcinfo, vxpg_number, value);
}

/* Infinite dates and timestamps have no day number: NULL, as to_char answers. */
PG_FUNCTION_INFO_V1(vx_format_date);
Datum vx_format_date(PG_FUNCTION_ARGS) {
    const DateADT date = PG_GETARG_DATEADT(0);
    if (DATE_NOT_FINITE(date)) PG_RETURN_NULL();
    return format_datum(fcinfo, vxpg_date, (double)date + VXPG_EPOCH_DAYS);
}

PG_FUNCTION_INFO_V1(vx_format_timestamp);
Datum vx_format_timestamp(PG_FUNCTION_ARGS) {
    const Timestamp timestamp = PG_GETARG_TIMESTAMP(0);
    if (TIMESTAMP_NOT_FINITE(timestamp)) PG_RETURN_NULL();
    /* Whole seconds exactly, then the microseconds. */
    const int64 seconds = timestamp / USECS_PER_SEC + (int64)VXPG_EPOCH_DAYS * VXPG_SECONDS_PER_DAY;
    const int64 micro = timestamp % USECS_PER_SEC;
    return format_datum(fcinfo, vxpg_datetime, (double)seconds + (double)micro / USECS_PER_SEC);
}

/* Reads argument 0 with SPEC (1) in LOCALE (2). False when nothing was read; a strict caller
   gets an error instead. */
static bool read_value(FunctionCallInfo fcinfo, vxpg_value_type type, bool strict, double* value) {
    const text* input = PG_GETARG_TEXT_PP(0);
    const text* spec = PG_GETARG_TEXT_PP(1);
    const text* locale = PG_GETARG_TEXT_PP(2);
    const int input_length = VARSIZE_ANY_EXHDR(input);
    const char* utf8 = pg_server_to_any(VARDATA_ANY(input), input_length, PG_UTF8);
    const size_t utf8_length = utf8 == VARDATA_ANY(input) ? (size_t)input_length : strlen(utf8);
    char message[VXPG_MESSAGE_SIZE];
    const vxpg_outcome outcome = vxpg_read(VARDATA_ANY(spec), VARSIZE_ANY_EXHDR(spec), VARDATA_ANY(locale),
                                           VARSIZE_ANY_EXHDR(locale), utf8, utf8_length, type, value, message);
    if (outcome == vxpg_ok) return true;
    if (outcome != vxpg_missing) raise_outcome(outcome, message);
    if (strict)
        ereport(ERROR, (errcode(ERRCODE_INVALID_DATETIME_FORMAT),
                        errmsg("invalid input syntax for informat %s: \"%s\"", text_to_cstring(spec),
                               text_to_cstring(input))));
    return false;
}

static Datum read_number(FunctionCallInfo fcinfo, bool strict) {
    double value;
    if (!read_value(fcinfo, vxpg_number, strict, &value)) PG_RETURN_NULL();
    PG_RETURN_FLOAT8(value);
}

static Datum read_date(FunctionCallInfo fcinfo, bool strict) {
    double days;
    if (!read_value(fcinfo, vxpg_date, strict, &days)) PG_RETURN_NULL();
    days = floor(days) - VXPG_EPOCH_DAYS;
    if (!(days >= DATETIME_MIN_JULIAN - POSTGRES_EPOCH_JDATE && days < DATE_END_JULIAN - POSTGRES_EPOCH_JDATE))
        ereport(ERROR, (errcode(ERRCODE_DATETIME_VALUE_OUT_OF_RANGE), errmsg("date out of range")));
    PG_RETURN_DATEADT((DateADT)days);
}

static Datum read_timestamp(FunctionCallInfo fcinfo, bool strict) {
    double seconds;
    if (!read_value(fcinfo, vxpg_datetime, strict, &seconds)) PG_RETURN_NULL();
    const double whole = floor(seconds);
    const double since_2000 = whole - (double)VXPG_EPOCH_DAYS * VXPG_SECONDS_PER_DAY;
    if (!(since_2000 >= (double)MIN_TIMESTAMP / USECS_PER_SEC && since_2000 < (double)END_TIMESTAMP / USECS_PER_SEC))
        ereport(ERROR, (errcode(ERRCODE_DATETIME_VALUE_OUT_OF_RANGE), errmsg("timestamp out of range")));
    PG_RETURN_TIMESTAMP((Timestamp)since_2000 * USECS_PER_SEC + (Timestamp)rint((seconds - whole) * USECS_PER_SEC));
}

PG_FUNCTION_INFO_V1(vx_read_float8);
Datum vx_read_float8(PG_FUNCTION_ARGS) { return read_number(fcinfo, false); }
PG_FUNCTION_INFO_V1(vx_read_float8_strict);
Datum vx_read_float8_strict(PG_FUNCTION_ARGS) { return read_number(fcinfo, true); }
PG_FUNCTION_INFO_V1(vx_read_date);
Datum vx_read_date(PG_FUNCTION_ARGS) { return read_date(fcinfo, false); }
PG_FUNCTION_INFO_V1(vx_read_date_strict);
Datum vx_read_date_strict(PG_FUNCTION_ARGS) { return read_date(fcinfo, true); }
PG_FUNCTION_INFO_V1(vx_read_timestamp);
Datum vx_read_timestamp(PG_FUNCTION_ARGS) { return read_timestamp(fcinfo, false); }
PG_FUNCTION_INFO_V1(vx_read_timestamp_strict);
Datum vx_read_timestamp_strict(PG_FUNCTION_ARGS) { return read_timestamp(fcinfo, true); }
