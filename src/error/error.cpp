// The error model (zelvan/error.h): raising, identifying and releasing.
#include <zelvan/error.h>

#include <exception>

const CRuntimeClass CErrException::classCErrException = {
    "CErrException", sizeof(CErrException), 0xFFFF, nullptr, &CException::classCException};

const CRuntimeClass* CErrException::GetRuntimeClass() const noexcept {
  return &classCErrException;
}

namespace ERR {

void Raise(CODE code) {
  if (code == NOMEM) AfxThrowMemoryException();
  if (code == FILE) AfxThrowFileException(1);
  throw new CErrException(code);
}

CODE Ident(CException* e) {
  if (e->IsKindOf(&CErrException::classCErrException)) {
    return static_cast<CErrException*>(e)->code;
  }
  if (e->IsKindOf(&CFileException::classCFileException)) return FILE;
  if (e->IsKindOf(&CMemoryException::classCMemoryException)) return NOMEM;
  return FAIL;
}

CODE Delete(CException* e) {
  const CODE code = Ident(e);
  e->Delete();
  return code;
}

bool GetErrorMessage(CException* e, char* buffer, unsigned int bufferSize,
                     unsigned int* helpContext) {
  return e->GetErrorMessage(buffer, bufferSize, helpContext) != 0;
}

CODE Clear() {
  // A rethrow with nothing in flight would end the process.
  if (!std::current_exception()) return NOEXCEPT;
  try {
    throw;
  } catch (CException* e) {
    return Delete(e);
  } catch (...) {
    return FAIL;
  }
}

}  // namespace ERR
