"""TARVELON_LOG=steps prints the steps of each change to standard error."""

import os
import subprocess
import sys

SCRIPT = """
import K7Q
from Tarvelon.metamodel.arplatform import common, variant
model = K7Q.Model.create()
model.history = 9
package = common.Package(model, "Brakes")
package.category = "first"
constants = [variant.SystemConst(model, name) for name in "AB"]
package.PackagedElement.extend(constants)
package.PackagedElement.reverse()
model.undo()
constants[1].destroy()
model.undo()
"""


def steps(setting):
    environment = {name: value for name, value in os.environ.items() if name != "TARVELON_LOG"}
    if setting is not None:
        environment["TARVELON_LOG"] = setting
    done = subprocess.run([sys.executable, "-c", SCRIPT], env=environment, capture_output=True, text=True)
    assert done.returncode == 0, done.stderr
    return done.stderr.splitlines()


def test_each_step_is_a_line_with_object_property_and_both_values():
    lines = steps("steps")

    assert lines[0] == "step: create common.Package (number 0)"
    assert 'step: common.Package \'Brakes\' (number 0).Category: nothing -> char vector "first"' in lines
    assert "step: common.Package 'Brakes' (number 0).PackagedElement[1]: nothing -> variant.SystemConst 'B' (number 2)" in lines
    assert "step: destroy variant.SystemConst 'B' (number 2)" in lines


def test_a_step_that_is_undone_is_printed_as_its_inverse():
    orders = [line for line in steps("steps") if "move" in line]

    place = "step: common.Package 'Brakes' (number 0).PackagedElement: move "
    assert orders == [place + "[0] to [1]", place + "[1] to [0]"]
    assert any(line.startswith("step: restore the destroyed variant.SystemConst 'B'") for line in steps("steps"))


def test_nothing_is_printed_without_the_setting_or_with_another():
    assert steps(None) == steps("") == steps("all") == []
