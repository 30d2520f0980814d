#include "system.h"

ChildProcess::~ChildProcess()
{
    closeInput();
    waitForEnd();
    if (m_output) {
        std::fclose(m_output);
    }
}

void ChildProcess::closeInput()
{
    if (m_input) {
        std::fclose(m_input);
        m_input = nullptr;
    }
}
