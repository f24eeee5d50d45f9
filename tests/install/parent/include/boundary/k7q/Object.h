#pragma once

#define OWN_OBJECT
