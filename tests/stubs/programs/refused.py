"""Code that mypy must refuse, each line with the given error code. It is never run."""

import K7Q
from Tarvelon.metamodel.arplatform import Factory, behavior, common, variant
from Tarvelon.metamodel.arplatform import commom  # refused: [attr-defined]

model = K7Q.Model.create()
factory = Factory.createNewFactory(model)
package = common.Package(model, "Brakes")
runnable = behavior.Runnable(model, "sym", "name")
view = package.asImmutable()
LinkTime = variant.BindingTimeKind.LinkTime
times = variant.SequenceOfBindingTimeKind.make(model)

# names
runnable.symbl  # refused: [attr-defined]
runnable.symbl = "sym"  # refused: [attr-defined]
common.Packag(model)  # refused: [attr-defined]
variant.BindingTimeKind.LinkTim  # refused: [attr-defined]
common.Package.MetaProperty().Categry()  # refused: [attr-defined]
K7Q.StaleIterater  # refused: [attr-defined]

# values of properties
runnable.symbol = 3  # refused: [assignment]
runnable.symbol = None  # refused: [assignment]
runnable.canBeInvokedConcurrently = "yes"  # refused: [assignment]
common.ModeDeclaration(model, "Applied").Value = 0.5  # refused: [assignment]
runnable.SwAddrMethod = package  # refused: [assignment]
behavior.TimingEvent(model, 0.1, "Every100ms").StartOnEvent = runnable.asImmutable()  # refused: [assignment]
runnable.Visibility = LinkTime  # refused: [assignment]
package.PackagedElement = [package]  # refused: [assignment]
package.Owner = package  # refused: [misc]

# views
view.category = "OPEN"  # refused: [misc]
view.PackagedElement.append(package)  # refused: [attr-defined]
view.PackagedElement.pop()  # refused: [misc]
view.PackagedElement.extend([package])  # refused: [arg-type, misc]
package.OwnedElement.append(package)  # refused: [attr-defined]
view.destroy()  # refused: [attr-defined]

# what may be nothing
runnable.SwAddrMethod.Name  # refused: [union-attr]
K7Q.Model.find("untitled").close()  # refused: [union-attr]

# sequences
package.PackagedElement.append(package.MetaClass())  # refused: [arg-type]
package.PackagedElement.extend([runnable])  # refused: [list-item]
times += [3]  # refused: [list-item]
times[0] = "LinkTime"  # refused: [call-overload]
times["first"]  # refused: [call-overload]
times.insert("first", LinkTime)  # refused: [call-overload]
times.erase(package.PackagedElement.begin())  # refused: [call-overload]
for each in package.PackagedElement:
    each.symbol  # refused: [attr-defined]

# enumerations
LinkTime < 3  # refused: [operator]
variant.BindingTimeKind()  # refused: [call-arg]
variant.BindingTimeKind.LinkTime = LinkTime  # refused: [misc]

# constructors
common.Identifiable(model)  # refused: [arg-type]
behavior.Runnable(model, "sym")  # refused: [call-overload]
behavior.Runnable(model, 1, "name")  # refused: [call-overload]
common.Package(name="Brakes")  # refused: [call-overload]
common.SequenceOfPackage(model)  # refused: [arg-type]

# factories
factory.create("common.Packag").category  # refused: [attr-defined]
factory.create("common.Package", 3).category  # refused: [attr-defined]
factory.create(common.Package).symbol  # refused: [attr-defined]
factory.createmetamodelarplatformcommonPackag()  # refused: [attr-defined]

# descriptions
common.Package.MetaProperty()[0]  # refused: [index]
common.Package.MetaProperty()["Category"].isReadonly()  # refused: [attr-defined]

# search
model.find("/Brakes").Name  # refused: [union-attr]
model.find(package)  # refused: [arg-type]
K7Q.Model.find("untitled").validate()  # refused: [union-attr]
model.instances("common.Package")  # refused: [arg-type]
model.instances(common.Package)[0].symbol  # refused: [attr-defined]
package.referrers()[0].subject  # refused: [attr-defined]
package.qualifiedName = "/Brakes"  # refused: [misc]

# changes
model.transaction().rollBack()  # refused: [attr-defined]
model.history = "long"  # refused: [assignment]
model.undoable = 1  # refused: [misc]
model.listen(lambda: None)  # refused: [arg-type, misc]

# files
model.save(release=7)  # refused: [arg-type]
model.save(3)  # refused: [arg-type]
K7Q.Model.load("brakes.xmi", True)  # refused: [misc]
K7Q.Model.load("brakes.xmi").problems[0].place  # refused: [attr-defined]

# copies and validation
package.clone().symbol  # refused: [attr-defined]
package.clone(3)  # refused: [arg-type]
model.clone(package)  # refused: [call-arg]
model.validate(package)  # refused: [call-arg]
package.validate()[0].text  # refused: [attr-defined]
K7Q.rule("symbol-prefix", behavior.Runnable)(lambda runnable: runnable.symbl)  # refused: [attr-defined, no-any-return]
