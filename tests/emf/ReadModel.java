import java.io.File;
import java.util.Map;
import java.util.TreeMap;
import org.eclipse.emf.common.util.Diagnostic;
import org.eclipse.emf.common.util.TreeIterator;
import org.eclipse.emf.common.util.URI;
import org.eclipse.emf.ecore.EObject;
import org.eclipse.emf.ecore.EPackage;
import org.eclipse.emf.ecore.EReference;
import org.eclipse.emf.ecore.EStructuralFeature;
import org.eclipse.emf.ecore.EcorePackage;
import org.eclipse.emf.ecore.resource.Resource;
import org.eclipse.emf.ecore.resource.ResourceSet;
import org.eclipse.emf.ecore.resource.impl.ResourceSetImpl;
import org.eclipse.emf.ecore.util.Diagnostician;
import org.eclipse.emf.ecore.xmi.impl.EcoreResourceFactoryImpl;
import org.eclipse.emf.ecore.xmi.impl.XMIResourceFactoryImpl;
import org.eclipse.emf.ecore.xmi.impl.XMIResourceImpl;

/**
 * Reads a model with EMF alone: ReadModel ECORE MODEL [COPY].
 *
 * Prints what EMF's own check says of the metamodel and of the model, the number of objects of each class, and
 * each value with the id of its object. COPY is where EMF saves the model again.
 */
public final class ReadModel {
  private static void print(String format, Object... values) {
    System.out.println(String.format(format, values));
  }

  private static void printFaults(String what, EObject object) {
    Diagnostic diagnostic = Diagnostician.INSTANCE.validate(object);
    print("%s %s", what, diagnostic.getSeverity() == Diagnostic.OK ? "OK" : "has faults");
    for (Diagnostic each : diagnostic.getChildren()) print("fault %s", each.getMessage());
  }

  private static void register(ResourceSet resources, EPackage ePackage) {
    resources.getPackageRegistry().put(ePackage.getNsURI(), ePackage);
    for (EPackage below : ePackage.getESubpackages()) register(resources, below);
  }

  private static String escaped(Object value) {
    StringBuilder text = new StringBuilder();
    for (char unit : value.toString().toCharArray()) {
      if (unit > ' ' && unit < 0x7F && unit != '\\') text.append(unit);
      else text.append(String.format("\\u%04X", (int) unit));
    }
    return text.toString();
  }

  private static String shown(XMIResourceImpl resource, EStructuralFeature feature, Object value) {
    return feature instanceof EReference ? resource.getID((EObject) value) : escaped(value);
  }

  private static void printValues(XMIResourceImpl resource, EObject object) {
    for (EStructuralFeature feature : object.eClass().getEAllStructuralFeatures()) {
      if (feature.isDerived() || !object.eIsSet(feature)) continue;
      Object value = object.eGet(feature);
      StringBuilder line = new StringBuilder();
      if (feature.isMany()) {
        for (Object each : (Iterable<?>) value) line.append(' ').append(shown(resource, feature, each));
      } else {
        line.append(' ').append(shown(resource, feature, value));
      }
      print("value %s %s%s", resource.getID(object), feature.getName(), line);
    }
  }

  public static void main(String[] arguments) throws Exception {
    ResourceSet resources = new ResourceSetImpl();
    Map<String, Object> factories = resources.getResourceFactoryRegistry().getExtensionToFactoryMap();
    factories.put("ecore", new EcoreResourceFactoryImpl());
    factories.put("*", new XMIResourceFactoryImpl());
    resources.getPackageRegistry().put(EcorePackage.eNS_URI, EcorePackage.eINSTANCE);

    Resource ecore = resources.getResource(URI.createFileURI(new File(arguments[0]).getAbsolutePath()), true);
    EPackage metamodel = (EPackage) ecore.getContents().get(0);
    printFaults("metamodel", metamodel);
    register(resources, metamodel);

    XMIResourceImpl model = (XMIResourceImpl)
        resources.getResource(URI.createFileURI(new File(arguments[1]).getAbsolutePath()), true);
    for (Resource.Diagnostic each : model.getErrors()) print("error %s", each.getMessage());
    for (Resource.Diagnostic each : model.getWarnings()) print("warning %s", each.getMessage());
    for (EObject root : model.getContents()) printFaults("model", root);
    Map<String, Integer> counts = new TreeMap<>();
    for (TreeIterator<EObject> all = model.getAllContents(); all.hasNext(); ) {
      EObject object = all.next();
      counts.merge(object.eClass().getEPackage().getName() + "." + object.eClass().getName(), 1, Integer::sum);
      printValues(model, object);
    }
    counts.forEach((name, count) -> print("count %s %d", name, count));
    if (arguments.length > 2) {
      model.setURI(URI.createFileURI(new File(arguments[2]).getAbsolutePath()));
      model.save(Map.of());
    }
  }
}
