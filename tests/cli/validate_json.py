#!/usr/bin/env python3
"""Validates JSON against definitions of a schema, by an independent validator.

validate_json.py SCHEMA reads a list of {"definition": name, "document": text} from standard input and
prints a list of what is wrong with each, an empty text where nothing is. The schema itself is checked
first; what is wrong with it ends the program with 1.
"""

import json
import sys

import jsonschema

Validator = jsonschema.Draft202012Validator


def problems(schema, definition, text):
    if definition not in schema["$defs"]:
        return f"the schema has no definition {definition}"
    try:
        document = json.loads(text)
    except json.JSONDecodeError as error:
        return str(error)
    wanted = {"$schema": schema["$schema"], "$defs": schema["$defs"],
              "$ref": "#/$defs/" + definition.replace(" ", "%20")}
    # The schema as a whole takes what any of its commands prints.
    errors = list(Validator(wanted).iter_errors(document)) + list(Validator(schema).iter_errors(document))
    return "\n".join(f"{error.json_path}: {error.message[-300:]}" for error in errors)


with open(sys.argv[1], encoding="utf-8") as file:
    described = json.load(file)
try:
    Validator.check_schema(described)
except jsonschema.SchemaError as error:
    sys.exit(str(error))
print(json.dumps([problems(described, each["definition"], each["document"])
                  for each in json.load(sys.stdin)]))
