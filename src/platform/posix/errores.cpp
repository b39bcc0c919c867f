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

void lanzar(int codigo, std::string_view ruta) {
    const std::string nombre(ruta);
    throw ErrorArchivo(numeroDeErrno(codigo), nombre,
                       nombre + ": " + std::generic_category().message(codigo));
}

bool interrumpida() {
    return errno == EINTR;
}

}  // namespace tarvoline::platform::posix
