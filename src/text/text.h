/*
 * The text services in one include: base64, character classes, case mapping and wide strings.
 *
 *   #include "text/text.h"
 *   if (text::is_digit(c)) ...; n = text::strip_trailing_blanks(field);
 */
#pragma once

#include "text/base64.h"
#include "text/case_mapping.h"
#include "text/char_classes.h"
#include "text/wide_strings.h"
