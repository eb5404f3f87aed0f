# Porte d'entrée : make, make test, make asan-test, make tsan-test, make bench, make fuzz.
.PHONY: all dependances test asan-test tsan-test bench fuzz abi-reference clean

all: dependances
	cmake --preset dev
	cmake --build --preset dev

dependances:
	@bash scripts/installe-dependances.sh

test: all
	ctest --preset dev

asan-test tsan-test: %-test: dependances
	cmake --preset $*
	cmake --build --preset $*
	ctest --preset $*

bench: dependances
	cmake --preset release
	cmake --build --preset release --target noyau_bench
	build/release/bench/noyau_bench --benchmark_out=build/release/bench/resultats.json \
	    --benchmark_out_format=json --benchmark_repetitions=5 \
	    --benchmark_report_aggregates_only=true
	python3 bench/ratios.py build/release/bench/resultats.json

fuzz: dependances
	cmake --preset fuzz
	cmake --build --preset fuzz

# Réécrit la référence de l'interface binaire depuis la bibliothèque construite : à faire,
# et à valider dans le même commit, quand un changement d'interface est voulu.
abi-reference: all
	rm -rf build/dev/paquet
	cmake --install build/dev --prefix build/dev/paquet >/dev/null
	sh scripts/verifie-abi.sh --accepte build/dev/paquet/lib/libnoyau.so.1

clean:
	rm -rf build
