"""The module enlace: names, results, errors, and a month of entries."""
import ast
import os
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
CASA = tempfile.TemporaryDirectory()
for variable in ("HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "TMPDIR"):
    os.environ[variable] = os.path.join(CASA.name, variable)
    os.mkdir(os.environ[variable])
DATOS = os.path.join(CASA.name, "datos") + "/"
os.mkdir(DATOS)
subprocess.run([os.path.join(os.environ["TARVOLINE_BIN"], "tarvoline-ajustes"), "grabar", "DATOS_DIR", DATOS],
               check=True)

import enlace  # noqa: E402  the settings come first


class Modulo(unittest.TestCase):
    empresas = 0

    def setUp(self):
        Modulo.empresas += 1
        self.nombre = f"Prueba {Modulo.empresas}"
        self.sesion = enlace.Enlace()
        self.sesion.CrearEmpresa(self.nombre, año="2026", PlanContablePorDefecto="1")
        self.sesion.AbrirEmpresa(self.nombre)

    def test_propiedades(self):
        s = self.sesion
        self.assertEqual(s.Empresa, DATOS + self.nombre + ".QZT")
        self.assertIn(s.Empresa, s.Empresas)
        self.assertEqual((s.MesInicioEjercicio, s.ModoRemoto, s.HayPendientes), ("01", False, False))
        s.Fecha, s.Canal, s.Usuario, s.Moneda, s.CambioMoneda = "31/01/26", "4", "7", "USD", 0.9
        self.assertEqual((s.Fecha, s.Canal, s.Usuario, s.Moneda, s.CambioMoneda), ("260131", "004", "07", "USD", 0.9))
        s.Moneda, s.CambioMoneda = "", 0
        s.Number = ""
        self.assertEqual(s.Número, "000002")
        for nombre in ("Empresa", "NumeroEmpresa", "Empresas", "HayPendientes"):
            with self.assertRaises(AttributeError):
                setattr(s, nombre, "")
        s.Config("Nombre largo", "Panadería Núñez")
        self.assertEqual(s.Config("NOMBRE LARGO"), "Panadería Núñez")

    def test_errores(self):
        with self.assertRaises(enlace.ErrorEnlace) as fecha:
            self.sesion.Fecha = "31/02/26"
        self.assertEqual(fecha.exception.numero, 0x8004C353)
        self.assertEqual(fecha.exception.fuente, "Veldorix OLE Server")
        self.assertEqual(str(fecha.exception), fecha.exception.descripcion)
        self.sesion.CerrarEmpresa()
        with self.assertRaisesRegex(enlace.ErrorEnlace, "Empresa No Abierta"):
            self.sesion.GrabarAsiento()
        with self.assertRaises(TypeError):
            self.sesion.AñadirApunte("57", "sin importe")

    def test_cuentas(self):
        self.assertEqual(self.sesion.CrearCuenta("4300000007", "Cliente siete"), (True, "4300000007"))
        self.assertEqual(self.sesion.CrearCuenta(Cuenta="43000000*", titulo="El siguiente"), (True, "4300000008"))
        self.assertEqual(enlace.Enlace.ValTIVA("A1"), 101)
        self.assertTrue(self.sesion.LeerPlan("43000000*"))
        self.assertEqual([self.sesion.Plan(i).titulo for i in (1, 2)], ["Cliente siete", "El siguiente"])
        self.assertEqual(self.sesion.LeerPlanEx(1, "4300000007", Siguiente_1_Anterior_2=1), 1)
        self.assertEqual(self.sesion.Plan(1).Cuenta, "4300000008")
        self.assertEqual((self.sesion.PlanDebe(1, 3), self.sesion.PlanHaber(2, 0)), (0, 0))
        self.assertEqual(self.sesion.LeerDatos(titulo="nadie"), 0)

    def test_grabar_leer_anular(self):
        s = self.sesion
        s.Fecha, s.Número = "15/03/26", ""
        linea = s.AddEntry("5700000000", "Caja", 1, Importe=10.0)
        linea.Importe = 12.5
        s.AñadirApunte("7000000000", "Venta", TIPO=2, Importe=12.5, Referencia="R1")
        self.assertEqual((s.Apunte(1).Importe, s.Apunte(0), s.Apunte(3)), (12.5, None, None))
        self.assertEqual(s.GrabarAsiento(), 0)
        self.assertEqual(s.ContadorApuntes(), 0)
        self.assertEqual(linea.Descripción, "Caja")  # a line outlives the entry
        s.LeerUltimoAsiento()
        self.assertEqual([(s.Apunte(i).TIPO, s.Apunte(i).Importe) for i in (1, 2)], [(1, 12.5), (2, 12.5)])
        self.assertEqual(s.ExisteReferencia("R1"), 1)
        self.assertEqual(s.CalcularMoneda(100)[1], 100)
        s.AnularAsiento(s.Fecha, s.Número)
        self.assertEqual(s.ExisteReferencia("R1"), 0)

    def test_lo_que_rodea_al_diario(self):
        """Each member that takes or gives more than texts, once."""
        s = self.sesion
        s.CrearDatos("4300000007", titulo="Peña", Riesgo=1500.5, CriterioCaja="1")
        self.assertEqual((s.LeerDatos("4300000007"), s.DATOS(1).Riesgo), (1, 1500.5))
        s.Fecha, s.Número = "15/03/26", ""
        s.AddVAT("4300000007", "4770000021", "F1", "15/03/26", "1", "R", 100, 0, 0, "", "", "", "", "", "", 0, "")
        s.AñadirCartera("31/12/26", "4300000007", "BANCO", "", 121)
        s.GrabarAsiento()
        s.Config("iva2", "477,472")
        s.CobroFacturaCriterioCaja("4300000007", "F1", ImporteCobro=21.5, CuentaContableCobro="5720000000",
                                   FechaCobro="20/04/26", MedioCobro=1)
        s.AddVATCashBased("4300000007", "F1", "0,5", 1, "Caja", True, "", "20/04/26")
        self.assertEqual(s.TotalPendiente("4300000007", "F1"), 99)
        with self.assertRaisesRegex(enlace.ErrorEnlace, "Medio de cobro incorrecto"):
            s.PagoFacturaCriterioCaja("4300000007", "F1", 1, "572", fechapago="20/04/26", MedioCobro=3)
        s.MarcarCartera("OK", "", "", "", "4300000007", "")
        self.assertEqual([(una.Importe, una.Marca) for una in s.LeerCartera(Cuenta="4300000007")], [(121, "OK")])
        s.CrearPresupuesto("6290000000", "Otros")
        s.ModificarPresupuesto("6290000000", 2, 5.5)
        self.assertIn("5.5", s.Util_TextoToArray(s.Util_LeerDatos("PRESU", "CUENTA", "6290000000")))
        bien = enlace.InmoClass()
        bien.I01_Codigo_String_10, bien.I11_Valor_Inicial_Long_12 = "B1", 1200.0
        s.CrearInmovilizado(bien)
        self.assertEqual((s.LeerInmovilizado(), s.inmovilizado(1).I11_Valor_Inicial_Long_12), (1, 1200.0))
        s.GUID(s.Número, "suyo")
        self.assertEqual((s.GUID(s.Número), s.LeerAsientosGuid("suyo")), ("suyo", [s.Número]))

    def test_un_mes(self):
        ejemplo = os.path.join(os.environ["TARVOLINE_EJEMPLOS"], "mes.py")
        hecho = subprocess.run([sys.executable, ejemplo, self.nombre, "2"], capture_output=True, text=True)
        self.assertEqual((hecho.returncode, hecho.stderr), (0, ""))
        lineas = hecho.stdout.splitlines()
        self.assertEqual(len(lineas), 4)
        self.assertTrue(lineas[-1].endswith("3395.06"), hecho.stdout)  # (1200 + 845.5 + 2310.25) * 1.21 - 1875.4
        self.assertIn("Nóminas del mes", lineas[-1])

    def test_los_nombres_de_los_tipos(self):
        """The stubs name what the module has, and all of it."""
        with open(os.path.join(os.path.dirname(enlace.__file__), "enlace.pyi"), encoding="utf-8") as archivo:
            clases = {nodo.name: nodo for nodo in ast.parse(archivo.read()).body if isinstance(nodo, ast.ClassDef)}
        del clases["ErrorEnlace"]
        for nombre, nodo in clases.items():
            dichos = {n.name for n in nodo.body if isinstance(n, ast.FunctionDef)}
            dichos |= {n.target.id for n in nodo.body if isinstance(n, ast.AnnAssign)}
            hechos = {n for n in vars(getattr(enlace, nombre)) if not n.startswith("_")}
            self.assertEqual(dichos - {"__init__"}, hechos, nombre)


class PorElServicio(unittest.TestCase):
    """The same members on the books of a folder at the service."""

    @classmethod
    def setUpClass(cls):
        programa = os.path.join(os.environ["TARVOLINE_BIN"], "tarvoline-servicio")
        cls.raiz = tempfile.TemporaryDirectory()
        for usuario, tipo in (("JEFA", "00"), ("ANA", "01"), ("EVA", "02")):
            subprocess.run([programa, "usuario", "--raiz", cls.raiz.name, "--alta", usuario, "--clave", "secreta1",
                            "--cuenta", "AC01", "--tipo", tipo], check=True, stdout=subprocess.DEVNULL)
        cls.arrancar()

    @classmethod
    def arrancar(cls):
        programa = os.path.join(os.environ["TARVOLINE_BIN"], "tarvoline-servicio")
        cls.servicio = subprocess.Popen([programa, "--raiz", cls.raiz.name, "--puerto", "0"], stdout=subprocess.PIPE,
                                        text=True)
        cls.direccion = cls.servicio.stdout.readline().split("/qzback")[0]

    @classmethod
    def parar(cls):
        cls.servicio.terminate()
        cls.servicio.communicate()

    @classmethod
    def tearDownClass(cls):
        cls.parar()
        cls.raiz.cleanup()

    def entrar(self, usuario):
        sesion = enlace.Enlace()
        sesion.Login(usuario, "secreta1", self.direccion)
        return sesion

    def test_quien_entra_y_adonde(self):
        s = enlace.Enlace()
        for llamar in (s.LeerCarpetas, lambda: s.Carpeta, lambda: setattr(s, "Carpeta", "U")):
            with self.assertRaises(enlace.ErrorEnlace) as fallo:
                llamar()
            self.assertEqual(fallo.exception.numero, 0x8004C35F)
        with self.assertRaises(enlace.ErrorEnlace) as fallo:
            s.Login("ANA", "otra", self.direccion)
        self.assertEqual((fallo.exception.numero, fallo.exception.fuente), (50900, ""))
        with self.assertRaisesRegex(enlace.ErrorEnlace, "Solo administradores"):
            s.Login("EVA", "secreta1", self.direccion)
        self.assertFalse(s.ModoRemoto)
        s.Login("ANA", "secreta1", self.direccion)
        self.assertTrue(s.ModoRemoto)
        suyas = s.LeerCarpetas()
        self.assertEqual((len(suyas), s.Carpeta), (1, ""))
        with self.assertRaises(enlace.ErrorEnlace) as fallo:
            s.Carpeta = suyas[0]
        self.assertEqual(fallo.exception.numero, 0x8004C360)

        s.CrearEmpresa("Obra Peña & Cía", año="2026", PlanContablePorDefecto="1")
        self.assertEqual(s.Empresas, ["Obra Peña & Cía"])
        jefa = self.entrar("JEFA")
        self.assertEqual(len(jefa.LeerCarpetas()), 3)
        self.assertNotIn("Obra Peña & Cía", jefa.Empresas)
        jefa.Carpeta = suyas[0]
        jefa.LoadEmpresas()
        self.assertEqual((jefa.Carpeta, jefa.Empresas), (suyas[0], s.Empresas))

    def test_leer_anular_y_volver_a_grabar(self):
        s = self.entrar("JEFA")
        s.CrearEmpresa("Vuelta", año="2026", PlanContablePorDefecto="1")
        s.AbrirEmpresa("Vuelta")
        self.assertEqual(s.CrearCuenta("43000000*", "Peña: <hijos> \"& Cía\""), (True, "4300000001"))
        self.assertTrue(s.LeerPlan("4300000001"))
        self.assertEqual(s.Plan(1).titulo, "Peña: <hijos> \"& Cía\"")
        s.Fecha, s.Número = "15/03/26", ""
        self.assertEqual(s.Número, "(Auto)")
        s.AñadirApunte("4300000001", "Cobro € \t<uno>", TIPO=1, Importe=12.5, Referencia="R=1: a")
        s.AñadirApunte("5720000000", "Cobro", TIPO=2, Importe=12.5)
        numero = s.GrabarAsiento()
        self.assertEqual(s.Número, f"{numero:06}")
        s.LeerUltimoAsiento()
        self.assertEqual(s.Apunte(1).Descripción, "Cobro €  <uno>")
        self.assertTrue(s.HayPendientes)
        s.AnularAsiento(s.Fecha, s.Número)
        self.assertEqual(s.ExisteReferencia("R=1: a"), 0)
        s.GrabarAsiento()
        self.assertEqual(s.ExisteReferencia("R=1: a"), 1)
        s.LeerExtracto("43*")
        self.assertEqual([(s.Extracto(i).Debe, s.Extracto(i).Saldo) for i in range(1, s.ContadorExtracto() + 1)],
                         [(12.5, 12.5)])
        s.GUID(s.Número, "suyo")
        self.assertEqual(s.LeerAsientosGuid("suyo"), [s.Número])

    def test_el_servicio_se_va(self):
        s = self.entrar("ANA")
        self.parar()
        try:
            with self.assertRaises(ConnectionError) as fallo:
                s.LoadEmpresas()
            self.assertNotIsInstance(fallo.exception, enlace.ErrorEnlace)
            with self.assertRaises(ConnectionError):
                self.entrar("ANA")
        finally:
            self.arrancar()


if __name__ == "__main__":
    unittest.main()
