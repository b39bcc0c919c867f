#include "platform/posix/errores.h"

#include <cerrno>
#include <string>
#include <system_error>

#include "platform/archivos.h"

namespace tarvoline::platform::posix {

int numeroDeErrno(int codigo) {
    switch (codigo) {
        case ENOENT:
            return error_archivo::noExiste;
        case ENOTDIR:
            return error_archivo::rutaNoExiste;
        case EEXIST:
            return error_archivo::yaExiste;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return error_archivo::discoLleno;
        case EMFILE:
        case ENFILE:
            return error_archivo::demasiadosArchivos;
        case EACCES:
        case EPERM:
        case EROFS:
        case EBUSY:
        case ETXTBSY:
        case EAGAIN:
            return error_archivo::permisoDenegado;
        case EISDIR:
        case ENOTEMPTY:
        case ENAMETOOLONG:
        case ELOOP:
        case EXDEV:
        case EINVAL:
        case EBADF:
            return error_archivo::ruta;
        default:
            return error_archivo::dispositivo;
    }
}

namespace {

// The rare ones keep the system's words.
std::string motivoDe(int codigo) {
    switch (codigo) {
        case ENOENT:
            return "no existe el archivo o la carpeta";
        case ENOTDIR:
            return "una parte de la ruta no es una carpeta";
        case EISDIR:
            return "es una carpeta";
        case ENOTEMPTY:
            return "la carpeta no está vacía";
        case EEXIST:
            return "ya existe";
        case ENOSPC:
            return "no queda espacio en el disco";
        case EDQUOT:
            return "no queda espacio en la cuota del disco";
        case EMFILE:
        case ENFILE:
            return "demasiados archivos abiertos";
        case EACCES:
        case EPERM:
            return "permiso denegado";
        case EROFS:
            return "el disco es de solo lectura";
        case EBUSY:
        case ETXTBSY:
        case EAGAIN:
            return "otro programa lo tiene ocupado";
        case ENAMETOOLONG:
            return "el nombre es demasiado largo";
        case EIO:
            return "error de entrada o salida en el disco";
        default:
            return std::generic_category().message(codigo);
    }
}

}  // namespace

void lanzar(int codigo, std::string_view ruta) {
    const std::string nombre(ruta);
    throw ErrorArchivo(numeroDeErrno(codigo), nombre, nombre + ": " + motivoDe(codigo));
}

bool interrumpida() {
    return errno == EINTR;
}

}  // namespace tarvoline::platform::posix
