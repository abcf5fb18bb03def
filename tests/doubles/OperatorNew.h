// OperatorNew: the operators that take memory and give it back, for a program that has its own.
// Included in one of its source files, behind the definitions of
//
//   void* takeMemory(std::size_t size) noexcept;   // null: memory has run out
//   void giveMemory(void* memory) noexcept;        // may be null
//
// A program that replaces one replaces all: memory of one's new must not come to a sanitizer's
// delete. Libraries that are loaded use the program's, too.
#pragma once

#include <new>

void* operator new(std::size_t size)
{
    if (void* memory = takeMemory(size))
        return memory;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return takeMemory(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return takeMemory(size);
}

void operator delete(void* memory) noexcept
{
    giveMemory(memory);
}

void operator delete[](void* memory) noexcept
{
    giveMemory(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    giveMemory(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept
{
    giveMemory(memory);
}

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept
{
    giveMemory(memory);
}

void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept
{
    giveMemory(memory);
}
