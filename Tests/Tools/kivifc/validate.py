"""validate.py SCHEMA DOCUMENT: whether a JSON document is what a JSON Schema describes.

Ends with 0 for yes, 1 for no, with the places that are wrong, and 77 when that cannot be found out here.
"""

import json
import sys

try:
    import jsonschema
except ImportError:
    print("python3-jsonschema is not installed")
    sys.exit(77)


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        schema = json.load(file)
    with open(sys.argv[2], encoding="utf-8") as file:
        document = json.load(file)
    validator = jsonschema.validators.validator_for(schema)
    validator.check_schema(schema)
    errors = list(validator(schema).iter_errors(document))
    for error in errors[:10]:
        print("/".join(str(part) for part in error.absolute_path), error.message[:300])
    return 1 if errors else 0


sys.exit(main())
