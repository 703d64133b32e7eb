"""Judges setups by their schema, with a validator that is not the program's.

  schema.py SCHEMA LINES   exits with 77 where Python has no jsonschema

Each line is a setup, whether the program takes it, and whether it may refuse it for what no schema can say.
"""
import json
import sys

try:
    from jsonschema import Draft202012Validator
except ImportError:
    sys.exit(77)

schema = json.load(open(sys.argv[1], encoding="utf-8"))
Draft202012Validator.check_schema(schema)
validator = Draft202012Validator(schema)
failures = 0
for line in open(sys.argv[2], encoding="utf-8"):
    setup, is_taken, is_beyond = json.loads(line)
    fits = validator.is_valid(setup)
    if is_taken and "$schema" in setup and setup["$schema"] != schema["$id"]:
        fits = None
    if fits != is_taken and not (fits and is_beyond):
        print("the schema takes it:", fits, "the program:", is_taken, json.dumps(setup))
        failures += 1
sys.exit(failures != 0)
