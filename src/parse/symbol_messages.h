// symbol_messages.h - how symbols and scopes show in messages.
#pragma once

// Installs the printer of symbols and the walk over the instantiations in the error engine.
void install_symbol_message_hooks();
