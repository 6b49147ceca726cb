"""The lists that programs were built against, the checks of layouts, and the table of calls that tests walk over."""
from .header import Function, Header, sentence
from .measure import Layout

MARK = "written by scripts/interface update"


def exports(header: Header) -> str:
    """Names of the functions."""
    return "\n".join(header.functions) + "\n"


def interface(header: Header, layout: Layout) -> str:
    """Functions with their types, values of enumerators, layouts of records."""
    lines = [f"function {each.name}: {each.result} ({each.types})" for each in header.functions.values()]
    lines += [f"enumerator {name}: {layout.both(name)}" for names in header.enumerations.values() for name, _ in names]
    for record in header.records.values():
        lines.append(f"record {record.name}: {layout.both(record.name)} bytes")
        lines += [f"    {record.name}.{field}: {kind} at {layout.both(f'{record.name}.{field}')}, "
                  f"{layout.both(f'sizeof {record.name}.{field}')} bytes" for field, kind, _ in record.fields]
    return "\n".join(lines) + "\n"


def layout_checks(header: Header, layout: Layout) -> str:
    """layout.h: every record that has no pointers, whose layout is the same everywhere."""
    lines = [f"""/** @file layout.h
 *  Compile-time check that this compiler lays the records out as the library does. Included by kesto_road.h.
 *  {MARK} */
#ifndef KESTO_ROAD_LAYOUT_H
#define KESTO_ROAD_LAYOUT_H

#if defined(__cplusplus)
#define KESTO_STATIC_ASSERT(condition, name) static_assert(condition, #name)
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
#define KESTO_STATIC_ASSERT(condition, name) _Static_assert(condition, #name)
#else
#define KESTO_STATIC_ASSERT(condition, name) typedef char kesto_assert_##name[(condition) ? 1 : -1]
#endif

#define KESTO_ASSERT_SIZE(Record, size) KESTO_STATIC_ASSERT(sizeof(Record) == (size), size_of_##Record)
#define KESTO_ASSERT_OFFSET(Record, field, offset) \\
    KESTO_STATIC_ASSERT(offsetof(Record, field) == (offset), offset_of_##Record##_##field)

KESTO_ASSERT_SIZE(bool, 1);
"""]
    for record in header.records.values():
        if not layout.one(record.name):
            continue
        lines.append(f"KESTO_ASSERT_SIZE({record.name}, {layout.wide[record.name]});")
        for field, _, _ in record.fields:
            offset = layout.wide[f"{record.name}.{field}"]
            if offset > 0 and not field.startswith("padding"):
                lines.append(f"KESTO_ASSERT_OFFSET({record.name}, {field}, {offset});")
        lines.append("")
    return "\n".join(lines) + """
#undef KESTO_ASSERT_OFFSET
#undef KESTO_ASSERT_SIZE
#undef KESTO_STATIC_ASSERT

#endif
"""


def calls(header: Header) -> str:
    """The records' fields, then every function: what it does to its road, what it gives, its arguments by name."""
    lines = [f"// {MARK}",
             "// KESTO_FIELD(record, field)",
             "// KESTO_ROW(function, what it does to its road, what it gives, its arguments)",
             "// Behind an argument's name: > it is written, = read and written, ? it may be null."]
    lines += [f"KESTO_FIELD({record.name}, {field})" for record in header.records.values() if not record.is_array
              for field, _, _ in record.fields if not field.startswith("padding")]

    def row(function: Function) -> str:
        names = " ".join(each.name + each.role + "?" * each.optional for each in function.parameters)
        return f'KESTO_ROW({function.name}, {function.effect}, {function.gives}, "{names}")'

    return "\n".join(lines + [row(each) for each in header.functions.values()]) + "\n"


def page(header: Header) -> str:
    """docs/functions.md: the functions by family, a sentence each."""
    lines = [f"<!-- {MARK} -->", "# Functions", "",
             "What [kesto_road.h](../include/kesto_road/kesto_road.h) exports, in its order; arguments, units, results "
             "and", "failures stand there."]
    family = ""
    for each in header.functions.values():
        if each.family != family:
            family = each.family
            lines += ["", f"## {family[0].upper() + family[1:]}", "", "| function | |", "|---|---|"]
        lines.append(f"| `{each.name}` | {sentence(each.comment)} |")
    return "\n".join(lines) + "\n"
