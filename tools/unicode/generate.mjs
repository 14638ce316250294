// Generates the character-class and case-mapping tables of src/text from the Unicode 9.0.0
// character database (npm package @unicode/unicode-9.0.0), and a compact copy of the same data
// for the tests to check the tables against.
//
//   cd tools/unicode && npm ci && node generate.mjs
//
// Writes src/text/unicode_tables.cpp and tests/text/unicode9_tables.h. The output depends only on
// the package, so a rerun reproduces both files byte for byte. Every table size the library
// fixes is checked here; a mismatch stops the run with a message and writes nothing.

import { writeFileSync } from 'node:fs';
import { fileURLToPath } from 'node:url';
import path from 'node:path';

const pkg = '@unicode/unicode-9.0.0';
const here = path.dirname(fileURLToPath(import.meta.url));
const root = path.resolve(here, '..', '..');
const command = 'cd tools/unicode && npm ci && node generate.mjs';
const max_code_point = 0x10ffff;

function fail(message) {
    console.error(`generate.mjs: ${message}`);
    process.exit(1);
}

// ---- general categories -------------------------------------------------------------------

// Category numbers as stored in ansi_ccl and in the test data; the host's service uses the same.
const categories = [
    ['Cn', 'Unassigned'], ['Lu', 'Uppercase_Letter'], ['Ll', 'Lowercase_Letter'],
    ['Lt', 'Titlecase_Letter'], ['Lm', 'Modifier_Letter'], ['Lo', 'Other_Letter'],
    ['Mn', 'Nonspacing_Mark'], ['Me', 'Enclosing_Mark'], ['Mc', 'Spacing_Mark'],
    ['Nd', 'Decimal_Number'], ['Nl', 'Letter_Number'], ['No', 'Other_Number'],
    ['Zs', 'Space_Separator'], ['Zl', 'Line_Separator'], ['Zp', 'Paragraph_Separator'],
    ['Cc', 'Control'], ['Cf', 'Format'], ['Co', 'Private_Use'], ['Cs', 'Surrogate'],
    ['Pd', 'Dash_Punctuation'], ['Ps', 'Open_Punctuation'], ['Pe', 'Close_Punctuation'],
    ['Pc', 'Connector_Punctuation'], ['Po', 'Other_Punctuation'], ['Sm', 'Math_Symbol'],
    ['Sc', 'Currency_Symbol'], ['Sk', 'Modifier_Symbol'], ['So', 'Other_Symbol'],
    ['Pi', 'Initial_Punctuation'], ['Pf', 'Final_Punctuation'],
];
const category_number = Object.fromEntries(categories.map(([short], i) => [short, i]));

async function load_ranges(property) {
    const ranges = (await import(`${pkg}/${property}/ranges.mjs`)).default;
    return ranges.map((r) => [r.begin, r.end - 1]);  // the package's ends are exclusive
}

const category_of = new Int8Array(max_code_point + 1).fill(-1);
for (const [short, name] of categories) {
    for (const [lo, hi] of await load_ranges(`General_Category/${name}`)) {
        for (let c = lo; c <= hi; ++c) {
            if (category_of[c] !== -1) fail(`U+${hex(c)} is in two categories`);
            category_of[c] = category_number[short];
        }
    }
}
for (let c = 0; c <= max_code_point; ++c) {
    if (category_of[c] === -1) fail(`U+${hex(c)} has no category`);
}
const major = (c) => categories[category_of[c]][0][0];
const is_cat = (c, ...names) => names.includes(categories[category_of[c]][0]);

// ---- class range tables ---------------------------------------------------------------------

function ranges_of(predicate) {
    const out = [];
    for (let c = 0; c <= max_code_point; ++c) {
        if (!predicate(c)) continue;
        if (out.length && out[out.length - 1][1] === c - 1) out[out.length - 1][1] = c;
        else out.push([c, c]);
    }
    return out;
}

const is_hex_letter = (c) =>
    (c >= 0x41 && c <= 0x46) || (c >= 0x61 && c <= 0x66) ||
    (c >= 0xff21 && c <= 0xff26) || (c >= 0xff41 && c <= 0xff46);
const is_graph = (c) => major(c) !== 'C' && major(c) !== 'Z';

const white_space_ranges = await load_ranges('Binary_Property/White_Space');
const white_space = ranges_of((c) => white_space_ranges.some(([lo, hi]) => c >= lo && c <= hi));
const listed_space = [[9, 13], [32, 32], [133, 133], [160, 160], [5760, 5760], [8192, 8202],
    [8232, 8232], [8233, 8233], [8239, 8239], [8287, 8287], [12288, 12288]];
// The fixed list keeps U+2028 and U+2029 apart; White_Space merges them into one range.
const merged_listed = ranges_of((c) => listed_space.some(([lo, hi]) => c >= lo && c <= hi));
if (JSON.stringify(merged_listed) !== JSON.stringify(white_space)) {
    fail('the fixed blank list differs from White_Space');
}

const tables = [
    ['digitranges', 54, (c) => is_cat(c, 'Nd')],
    ['lowerranges', 633, (c) => is_cat(c, 'Ll')],
    ['upperranges', 627, (c) => is_cat(c, 'Lu')],
    ['alpharanges', 571, (c) => major(c) === 'L'],
    ['spaceranges', 11, null],
    ['printranges', 641, (c) => is_graph(c) || is_cat(c, 'Zs')],
    ['xdigitranges', 58, (c) => is_cat(c, 'Nd') || is_hex_letter(c)],
    ['punctranges', 168, (c) => major(c) === 'P'],
    ['graphranges', 641, is_graph],
    ['controlranges', 20, (c) => is_cat(c, 'Cc', 'Cf')],
].map(([name, count, predicate]) => {
    const ranges = predicate ? ranges_of(predicate) : listed_space;
    if (ranges.length !== count) fail(`${name} has ${ranges.length} ranges, not ${count}`);
    return { name, ranges };
});

// ---- ansi_ccl -------------------------------------------------------------------------------

// Class bits: each kernel class mask tests the bits its class owns.
const bit = {
    upper: 0x1, lower: 0x2, other_letter: 0x4, other_graphic: 0x8, digit: 0x40, xdigit: 0x80,
    blank: 0x200, control: 0x1000, punct: 0x80000,
};
function class_bits(c) {
    const cat = categories[category_of[c]][0];
    let bits = 0;
    if (cat === 'Lu') bits |= bit.upper;
    else if (cat === 'Ll') bits |= bit.lower;
    else if (cat[0] === 'L') bits |= bit.other_letter;
    else if (cat === 'Nd') bits |= bit.digit;
    else if (cat[0] === 'P') bits |= bit.punct;
    else if (cat[0] === 'M' || cat[0] === 'N' || cat[0] === 'S') bits |= bit.other_graphic;
    else if (cat === 'Zs') bits |= bit.blank;
    else if (cat === 'Cc' || cat === 'Cf') bits |= bit.control;
    if (cat === 'Nd' || is_hex_letter(c)) bits |= bit.xdigit;
    return bits;
}

// ---- case mapping ---------------------------------------------------------------------------

async function load_mapping(name) {
    return (await import(`${pkg}/Simple_Case_Mapping/${name}/code-points.mjs`)).default;
}
const to_lower = await load_mapping('Lowercase');
const to_upper = await load_mapping('Uppercase');

const bmp_blocks = 0x10000 / 128;
const exception_delta = -128;

function case_tables(mapping, label) {
    const index = [];
    const deltas = [];           // concatenated 128-entry blocks, identical blocks shared
    const block_at = new Map();  // block contents -> offset
    const exceptions = [];
    for (let b = 0; b < bmp_blocks; ++b) {
        const block = [];
        let changes = false;
        for (let c = b * 128; c < (b + 1) * 128; ++c) {
            const to = mapping.get(c) ?? c;
            if (to === c) { block.push(0); continue; }
            changes = true;
            const delta = to - c;
            if (delta > exception_delta && delta <= 127) block.push(delta);
            else { block.push(exception_delta); exceptions.push([c, to]); }
        }
        if (!changes) { index.push(-1); continue; }
        const key = block.join(',');
        if (!block_at.has(key)) {
            block_at.set(key, deltas.length);
            deltas.push(...block);
        }
        index.push(block_at.get(key));
    }
    if (deltas.length - 128 > 32767) fail(`${label}: delta table too long for 16-bit offsets`);
    // The lookup walks the whole exception list replacing as it goes; check no pair chains.
    for (let c = 0; c < 0x10000; ++c) {
        let got = c;
        const at = index[c >> 7];
        if (at >= 0) {
            const d = deltas[at + (c & 127)];
            if (d !== exception_delta) got = c + d;
            else for (const [from, to] of exceptions) if (from === got) got = to;
        }
        if (got !== (mapping.get(c) ?? c)) fail(`${label}: U+${hex(c)} maps wrongly`);
    }
    return { index, deltas, exceptions };
}
const lower = case_tables(to_lower, 'lower');
const upper = case_tables(to_upper, 'upper');

// ---- writing --------------------------------------------------------------------------------

function hex(n, digits = 4) {
    return n.toString(16).toUpperCase().padStart(digits, '0');
}
function rows(items, per_line, indent = '    ') {
    const out = [];
    for (let i = 0; i < items.length; i += per_line) {
        out.push(indent + items.slice(i, i + per_line).join(', ') + ',');
    }
    return out.join('\n');
}
const version = (await import(`${pkg}/package.json`, { with: { type: 'json' } })).default.version;
const banner = `// Generated by \`${command}\` from Unicode 9.0.0 (${pkg} ${version}); do not edit.`;

let cpp = `${banner}
// Class range tables, the ASCII class table and the case-mapping tables of unicode_tables.h.

#include "text/unicode_tables.h"

namespace vxlocfmt::text {
`;
for (const { name, ranges } of tables) {
    cpp += `\nconst CodeRange ${name}[${ranges.length}] = {\n`;
    cpp += rows(ranges.map(([lo, hi]) => `{0x${hex(lo)}, 0x${hex(hi)}}`), 4) + '\n};\n';
}

cpp += `\n// code point, class bits, category, 0, upper case (0 if none), lower case (0 if none), 0, 0\n`;
cpp += `const std::uint32_t ansi_ccl[128][8] = {\n`;
for (let c = 0; c < 128; ++c) {
    const up = (to_upper.get(c) ?? c) === c ? 0 : to_upper.get(c);
    const low = (to_lower.get(c) ?? c) === c ? 0 : to_lower.get(c);
    const words = [c, class_bits(c), category_of[c], 0, up, low, 0, 0];
    cpp += `    {${words.map((w, i) => (i === 1 ? `0x${hex(w, 5)}` : String(w))).join(', ')}},\n`;
}
cpp += '};\n';

for (const [name, t] of [['lower', lower], ['upper', upper]]) {
    cpp += `\nconst std::int16_t ${name}_block_index[${bmp_blocks}] = {\n${rows(t.index.map(String), 16)}\n};\n`;
    cpp += `const std::int8_t ${name}_deltas[${t.deltas.length}] = {\n${rows(t.deltas.map(String), 16)}\n};\n`;
    const pairs = [...t.exceptions, [0, 0]];
    cpp += `const CasePair ${name}_exceptions[${pairs.length}] = {\n`;
    cpp += rows(pairs.map(([a, b]) => `{0x${hex(a)}, 0x${hex(b)}}`), 4) + '\n};\n';
}
cpp += '\n}  // namespace vxlocfmt::text\n';

// Test data: the category of every code point as runs, and the simple mappings in full.
const runs = [];
for (let c = 0; c <= max_code_point; ++c) {
    if (c === 0 || category_of[c] !== category_of[c - 1]) runs.push([c, category_of[c]]);
}
const pairs_of = (mapping) => [...mapping.entries()].filter(([a, b]) => a !== b).sort((x, y) => x[0] - y[0]);
const test_data = `${banner}
// The Unicode 9.0.0 data the text tables were made from, for the tests to check them against.
#pragma once

#include <cstdint>

namespace vxlocfmt::text::testdata {

struct CategoryRun { std::uint32_t first; std::uint8_t category; };  // runs to the next one's first
struct Mapping { std::uint32_t from, to; };

inline constexpr CategoryRun category_runs[] = {
${rows(runs.map(([c, cat]) => `{0x${hex(c)}, ${cat}}`), 6)}
};
inline constexpr Mapping simple_lower[] = {
${rows(pairs_of(to_lower).map(([a, b]) => `{0x${hex(a)}, 0x${hex(b)}}`), 5)}
};
inline constexpr Mapping simple_upper[] = {
${rows(pairs_of(to_upper).map(([a, b]) => `{0x${hex(a)}, 0x${hex(b)}}`), 5)}
};

}  // namespace vxlocfmt::text::testdata
`;

writeFileSync(path.join(root, 'src/text/unicode_tables.cpp'), cpp);
writeFileSync(path.join(root, 'tests/text/unicode9_tables.h'), test_data);
console.log(`wrote src/text/unicode_tables.cpp (${lower.exceptions.length} + ${upper.exceptions.length} exceptions, ` +
    `${lower.deltas.length} + ${upper.deltas.length} deltas) and tests/text/unicode9_tables.h (${runs.length} runs)`);
