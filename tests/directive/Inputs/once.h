#pragma once
once
