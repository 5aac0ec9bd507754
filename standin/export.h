// Marks what hvstandin.dll offers to the module and the desk. The worker has its part of the class library in itself.
#pragma once

#if defined(HALVORAN_STANDIN_BUILD)
#define HALVORAN_STANDIN_API __declspec(dllexport)
#elif defined(HALVORAN_STANDIN_STATIC)
#define HALVORAN_STANDIN_API
#else
#define HALVORAN_STANDIN_API __declspec(dllimport)
#endif
