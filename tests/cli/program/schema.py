"""As much of JSON Schema as docs/model.schema.json uses; an unknown keyword is an error."""

TYPES = {
    "object": dict,
    "array": list,
    "string": str,
    "integer": int,
    "number": (int, float),
    "null": type(None),
}
NOTES = {"$schema", "$defs", "title", "description"}


def violations(value, schema, root=None, path="model"):
    """What is wrong with the value, one text a fault."""
    root = root or schema
    faults = []
    for keyword, rule in schema.items():
        if keyword not in NOTES:
            faults += CHECKS[keyword](value, rule, schema, root, path)
    return faults


def check_ref(value, rule, _, root, path):
    return violations(value, root["$defs"][rule.removeprefix("#/$defs/")], root, path)


def check_type(value, rule, *rest):
    names = rule if isinstance(rule, list) else [rule]
    good = any(isinstance(value, TYPES[name]) for name in names) and not isinstance(value, bool)
    return [] if good else [f"{rest[-1]} is not of type {rule}"]


def check_any(value, rule, _, root, path):
    good = any(not violations(value, option, root, path) for option in rule)
    return [] if good else [f"{path} fits none of the alternatives"]


def check_required(value, rule, *rest):
    return [f"{rest[-1]} lacks {name}" for name in rule if name not in value]


def check_properties(value, rule, _, root, path):
    return [
        fault
        for name, item in (value.items() if isinstance(value, dict) else ())
        if name in rule
        for fault in violations(item, rule[name], root, f"{path}.{name}")
    ]


def check_additional(value, rule, schema, root, path):
    others = set(value) - set(schema.get("properties", ()))
    if rule is False:
        return [f"{path} has the unknown member {name}" for name in sorted(others)]
    return [f for name in others for f in violations(value[name], rule, root, f"{path}.{name}")]


def check_items(value, rule, _, root, path):
    return [
        fault
        for i, item in enumerate(value if isinstance(value, list) else ())
        for fault in violations(item, rule, root, f"{path}[{i}]")
    ]


def simple(holds, text):
    def check(value, rule, *rest):
        return [] if holds(value, rule) else [f"{rest[-1]} {text} {rule}"]

    return check


CHECKS = {
    "$ref": check_ref,
    "type": check_type,
    "anyOf": check_any,
    "required": check_required,
    "properties": check_properties,
    "additionalProperties": check_additional,
    "items": check_items,
    "const": simple(lambda value, rule: value == rule, "is not"),
    "enum": simple(lambda value, rule: value in rule, "is none of"),
    "minimum": simple(lambda value, rule: not isinstance(value, (int, float)) or value >= rule,
                      "is less than"),
    "maximum": simple(lambda value, rule: not isinstance(value, (int, float)) or value <= rule,
                      "is more than"),
    "minItems": simple(lambda value, rule: len(value) >= rule, "has fewer elements than"),
    "maxItems": simple(lambda value, rule: len(value) <= rule, "has more elements than"),
}
