"""The start of an interactive Python. All names of this module are available at the prompt."""

import types

import K7Q
import Tarvelon
from Tarvelon.metamodel import arplatform

if __name__ == "__main__":
    # The packages of the metamodel under the short names that scripts use for them.
    for _name in dir(arplatform):
        if not _name.startswith("_") and isinstance(_package := getattr(arplatform, _name), types.ModuleType):
            globals()[_name] = _package

    print("K7Q, Tarvelon and the packages of Tarvelon.metamodel.arplatform are imported.")
    print("Try: model = K7Q.Model.create(); help(common.Package); leave with Ctrl-D.")
