#pragma once

// Documents for the fuzz targets of the validator: each exercises every keyword.

namespace fuzz {

constexpr const char* schema = R"({
    "$schema": "./metaschema.json",
    "type": "object",
    "description": "all keywords",
    "required": ["names"],
    "optional": ["items", "x", "x_file", "y", "y_file"],
    "properties": {
        "names": {"type": "array", "items": {"type": "object", "required": ["name"],
            "properties": {"name": {"type": "string"}}}},
        "items": {"type": "array", "items": {
            "type": "object", "autoexpand": true,
            "required": ["type", "ref"], "optional": ["low", "high", "flag"],
            "properties": {
                "type": {"type": "string", "enum": ["a", "b", "c"], "default": "a"},
                "ref": {"type": "string", "requiredIn": {"itemProperty": "name", "$array_ref": "/names"}},
                "low": {"type": "number", "minimum": 0, "exclusiveMinimum": true, "units": "m"},
                "high": {"type": "integer", "maximum": 10, "exclusiveMaximum": false},
                "flag": {"type": "boolean"}
            },
            "oneOf": [
                {"properties": {"type": {"const": "a"}}, "required": ["type", "low"]},
                {"properties": {"type": {"const": "b"}}, "required": ["type", "high"],
                 "oneOf": [{"required": ["p"]}, {"required": ["q"], "optional": ["r"]}]},
                {"properties": {"type": {"const": "c"}}, "required": ["type"]}
            ]
        }},
        "x": {"minimum": 1, "maximum": 2, "exclusiveMaximum": true},
        "x_file": {"type": "string", "format": "uri"},
        "y": true,
        "y_file": false
    },
    "allOf": [
        {"oneOf": [{"required": ["x"]}, {"required": ["x_file"]}]},
        {"oneOf": [{"required": ["y"]}, {"required": ["y_file"]}, {"optional": ["z"]}]}
    ]
})";

constexpr const char* data = R"({
    "names": [{"name": "n1"}, {"name": "n2"}, {}, 3],
    "items": [
        {"type": "a", "ref": "n1", "low": 0.5},
        {"type": "b", "ref": "n2", "high": 7, "p": 1},
        {"type": "d", "ref": "n3", "low": 0, "flag": "yes"},
        5, null, "text", true, [], {}
    ],
    "x": 1.5, "y": {"inner": {"deep": [1, [2, [3]]]}}, "a/b": 1, "~": 2, "": {"": 0}
})";

} // namespace fuzz
